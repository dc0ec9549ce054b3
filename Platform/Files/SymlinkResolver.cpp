// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/SymlinkResolver.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Files/SystemCall.h"

namespace quirebind {
namespace {

/// As many as Linux follows in one path.
constexpr int kMostLinksFollowed = 40;

/// Longer than any file system's links; a larger one is not followed.
constexpr std::size_t kLongestTarget = std::size_t{1} << 16U;

}  // namespace

/// Walks along an absolute path.
class SymlinkResolver::Walk {
 public:
    Walk(FileSystem& files, std::string path) : files_(&files), rest_(std::move(path)) {}

    /// Whether it comes to the end of the path.
    bool walk() {
        for (;;) {
            begin_ = std::min(rest_.find_first_not_of('/', begin_), rest_.size());
            if (begin_ == rest_.size()) return true;
            const std::size_t end = std::min(rest_.find('/', begin_), rest_.size());
            if (!passes(rest_.substr(begin_, end - begin_))) return false;
        }
    }

    /// Where it has come to, with what is left of the path.
    [[nodiscard]] std::string result() const {
        if (begin_ != rest_.size()) return prefix_ + '/' + rest_.substr(begin_);
        return prefix_.empty() ? "/" : prefix_;
    }

    /// Where `name` leads to from where it has come to, if that is the place itself: most names are
    /// those of files, or of nothing yet.
    [[nodiscard]] std::optional<std::string> placeOf(std::string_view name) const {
        if (name.empty() || name.find('\0') != std::string_view::npos) return std::nullopt;
        std::string path;
        path.reserve(prefix_.size() + 1 + name.size());
        path.append(prefix_).append("/").append(name);
        struct stat found{};
        const int result =
            uninterrupted([&] { return files_->linkStatus(AT_FDCWD, path.c_str(), found); });
        // "." and ".." are folders, too.
        const bool leadsOn = result >= 0 && (S_ISLNK(found.st_mode) || S_ISDIR(found.st_mode));
        if (leadsOn) return std::nullopt;
        return path;
    }

    /// Goes on with another path from where it has come to.
    void goOn(std::string path) {
        rest_ = std::move(path);
        begin_ = 0;
    }

 private:
    /// Moves the first component `name` of the rest to the prefix, or replaces it by the target of
    /// the symbolic link that it is. False, and nothing changed, where the walk ends before it.
    bool passes(const std::string& name) {
        if (name.find('\0') != std::string::npos) return false;
        const std::string path = prefix_ + '/' + name;
        struct stat found{};
        const int result =
            uninterrupted([&] { return files_->linkStatus(AT_FDCWD, path.c_str(), found); });
        if (result < 0) return false;
        if (S_ISLNK(found.st_mode)) return follows(path, name.size());
        if (!S_ISDIR(found.st_mode)) return false;  // nothing can come after it

        begin_ += name.size();
        if (name == "..") {
            // The root's parent is the root.
            if (!prefix_.empty()) prefix_.erase(prefix_.rfind('/'));
        } else if (name != ".") {
            prefix_ = path;
        }
        return true;
    }

    /// Replaces the `nameSize` bytes of the symbolic link `path` in the rest by its target.
    bool follows(const std::string& path, std::size_t nameSize) {
        if (linksFollowed_ == kMostLinksFollowed) return false;
        std::optional<std::string> target = targetOf(path);
        if (!target) return false;
        ++linksFollowed_;
        if (target->front() == '/') prefix_.clear();
        rest_ = std::move(*target).append(rest_, begin_ + nameSize);
        begin_ = 0;
        return true;
    }

    std::optional<std::string> targetOf(const std::string& path) {
        std::string target;
        // A target that fills the space may have been cut off.
        for (std::size_t space = 256; space <= kLongestTarget; space *= 2) {
            target.resize(space);
            const ssize_t size =
                uninterrupted([&] { return files_->readLink(AT_FDCWD, path.c_str(), target); });
            if (size <= 0) return std::nullopt;
            if (std::cmp_less(size, space)) {
                target.resize(static_cast<std::size_t>(size));
                return target;
            }
        }
        return std::nullopt;
    }

    FileSystem* files_;
    std::string prefix_;  // a folder, without links; empty for the root
    std::string rest_;    // from begin_ on not looked at yet
    std::size_t begin_ = 0;
    int linksFollowed_ = 0;
};

SymlinkResolver::SymlinkResolver(FileSystem& files) : files_(files) {}
SymlinkResolver::~SymlinkResolver() = default;

std::string SymlinkResolver::resolve(const std::string& path) {
    if (path.empty()) return path;
    if (path.front() == '/') return resolveAbsolute(path);
    std::error_code error;
    if (workingFolder_.empty()) workingFolder_ = std::filesystem::current_path(error).string();
    return error ? path : resolveAbsolute(workingFolder_ + '/' + path);
}

std::string SymlinkResolver::resolveAbsolute(const std::string& path) {
    const std::size_t end = path.rfind('/') + 1;
    const std::string_view name = std::string_view(path).substr(end);
    if (folder_ != std::string_view(path).substr(0, end)) {
        folder_ = path.substr(0, end);
        auto walk = std::make_unique<Walk>(files_, folder_);
        const bool arrives = walk->walk();
        inside_ = arrives ? std::move(walk) : nullptr;
    }
    if (inside_)
        if (auto place = inside_->placeOf(name)) return *std::move(place);
    Walk walk = inside_ ? *inside_ : Walk(files_, path);
    if (inside_) walk.goOn(std::string(name));
    (void)walk.walk();
    return walk.result();
}

}  // namespace quirebind
