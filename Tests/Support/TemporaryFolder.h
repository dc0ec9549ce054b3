// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace quirebind {

/// A fresh folder for one test, removed with all that is in it in the end. Throws where the folder
/// or a file in it cannot be made or read: that is no failure of what is tested.
class TemporaryFolder {
 public:
    TemporaryFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "quirebind-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), "mkdtemp");
        }
        // Tests compare with resolved paths; the system's temporary folder may be a link itself.
        path_ = std::filesystem::canonical(pattern).string();
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
        if (!ignored) return;
        // A test took the permission away that is needed to look into a folder.
        makeAccessible(path_);
        std::filesystem::remove_all(path_, ignored);
    }

    /// Absolute, without symbolic links and without a separator at its end.
    [[nodiscard]] const std::string& path() const { return path_; }

    /// The path of `name` in this folder.
    [[nodiscard]] std::string operator/(std::string_view name) const {
        return path_ + '/' + std::string(name);
    }

    /// Creates or overwrites the file `name`.
    void write(std::string_view name, std::string_view bytes) const {
        std::ofstream file(*this / name, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) throw std::runtime_error("cannot write " + std::string(name));
    }

    /// All bytes of the file `name`.
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream file(*this / name, std::ios::binary);
        if (!file) throw std::runtime_error("cannot read " + std::string(name));
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The names of everything in the folder, hidden files too, sorted.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            result.push_back(entry.path().filename().string());
        }
        std::ranges::sort(result);
        return result;
    }

 private:
    static void makeAccessible(const std::filesystem::path& root) {
        namespace fs = std::filesystem;
        std::error_code ignored;
        std::vector<fs::path> folders{root};
        while (!folders.empty()) {
            const fs::path folder = folders.back();
            folders.pop_back();
            fs::permissions(folder, fs::perms::owner_all, ignored);
            for (fs::directory_iterator i(folder, ignored), end; i != end; i.increment(ignored)) {
                if (i->symlink_status(ignored).type() == fs::file_type::directory) {
                    folders.push_back(i->path());
                }
            }
        }
    }

    std::string path_;
};

}  // namespace quirebind
