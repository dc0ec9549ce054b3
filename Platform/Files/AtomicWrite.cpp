// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/AtomicWrite.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/SystemCall.h"
#include "Platform/Files/TemporaryFile.h"

// How a file is written in one atomic step:
//
//  1. The destination's path is split, exactly as it was passed, in folder and name.
//  2. The folder is opened: from here on it may be moved, and still holds what is written.
//  3. Bytes that the process's file size limit does not allow are refused: writing them would raise
//     a signal. So is a folder in the destination's place, before the work rather than after it.
//  4. A file without a name is opened in the folder, readable for nobody else.
//  5. All bytes are written to it.
//  6. It gets its permission bits: those of the regular file that it replaces, else the usual ones
//     of a new file. fsync(): the bytes reach the medium before the name does.
//  7. Where there was nothing at the destination (3), the file is linked there: the one step that
//     anybody sees, and steps 8 to 10 fall away.
//  8. Else, or where something has come there meanwhile, it is linked under a random name, for
//     linking alone cannot replace what is there.
//     Where files without a name do not exist (4), steps 4 to 6 are done with a file of a random
//     name from the start. Where they cannot be linked, such a file is made of the one without a
//     name, for the bytes themselves may be gone once they are written.
//  9. It is closed.
// 10. It is renamed to the destination: then this is the one step that anybody sees.
// 11. fsync() of the folder: the new name reaches the medium.
//
// Whatever fails before the one step (7 or 10) fails the whole, and the temporary file is removed;
// whatever fails after it does not count: step 6 has told what the medium did not take.
//
// After a crash the destination holds the old bytes (before the one step reached the medium) or all
// of the new ones. A crash between 8 and 10 leaves the random name behind, as does, where files
// without a name do not exist, one after 4.

namespace quirebind {

namespace {

#if defined(O_PATH)
constexpr int kFolderForSearchOnly = O_PATH;
#elif defined(O_SEARCH)
constexpr int kFolderForSearchOnly = O_SEARCH;
#else
constexpr int kFolderForSearchOnly = O_RDONLY;
#endif

constexpr mode_t kPermissionBits = 0777;
constexpr mode_t kNewFile = 0666;

struct Place {
    std::string folder;
    std::string name;
};

/// Step 1. No component is interpreted: "a/../b" is not "b" where "a" is a symbolic link.
Place placeOf(const URL& destination) {
    if (!destination.isFileURL()) throwSystemError(EOPNOTSUPP);
    const std::string_view path = destination.path();
    if (path.empty()) throwSystemError(ENOENT);
    if (path.find('\0') != std::string_view::npos) throwSystemError(EINVAL);

    const std::size_t name = path.rfind('/') + 1;  // 0 where there is no separator
    Place place{.folder = std::string(path.substr(0, name)),
                .name = std::string(path.substr(name))};
    if (place.name.empty() || place.name == "." || place.name == "..") throwSystemError(EISDIR);
    if (place.folder.empty()) place.folder = ".";
    return place;
}

struct Folder {
    FileDescriptor descriptor;
    bool canSync = false;
};

/// Step 2. To create a file in a folder one need not be allowed to list it.
Folder openFolder(FileSystem& files, const std::string& path) {
    const auto open = [&](int access) {
        return uninterrupted([&] {
            return files.open(AT_FDCWD, path.c_str(), access | O_DIRECTORY | O_CLOEXEC, 0);
        });
    };
    const int readable = open(O_RDONLY);
    if (readable != -EACCES) {
        return {.descriptor = FileDescriptor(files, orThrow(readable)), .canSync = true};
    }
    const int searchable = orThrow(open(kFolderForSearchOnly));
    return {.descriptor = FileDescriptor(files, searchable), .canSync = false};
}

struct Replacement {
    bool replacesSomething = false;
    mode_t mode = 0;  // permission bits
};

/// Step 3, and the permission bits for step 6.
Replacement replacementOf(FileSystem& files, int folder, const std::string& name) {
    struct stat existing{};
    const int result =
        uninterrupted([&] { return files.linkStatus(folder, name.c_str(), existing); });
    const bool exists = result != -ENOENT;
    if (exists) {
        orThrow(result);
        if (S_ISDIR(existing.st_mode)) throwSystemError(EISDIR);
        if (S_ISREG(existing.st_mode)) {
            return {.replacesSomething = true, .mode = existing.st_mode & kPermissionBits};
        }
        if (!S_ISLNK(existing.st_mode)) throwSystemError(EOPNOTSUPP);
    }
    return {.replacesSomething = exists,
            .mode = static_cast<mode_t>(kNewFile & ~files.creationMask())};
}

/// Steps 4 to 10.
void put(std::span<const std::byte> bytes, const std::string& name, const Replacement& replacement,
         TemporaryFile& temporary, const std::function<void(std::size_t)>& written) {
    if (!temporary.createUnnamed()) temporary.createNamed();
    temporary.write(bytes, written);
    temporary.makeDurable(replacement.mode);
    if (!replacement.replacesSomething && temporary.appear(name)) return;
    if (!temporary.giveName()) {
        temporary.copyToNamed(bytes.size());
        temporary.makeDurable(replacement.mode);
    }
    temporary.close();
    temporary.replace(name);
}

}  // namespace

void writeAtomically(std::span<const std::byte> bytes, const URL& destination, FileSystem& files,
                     const std::function<void(std::size_t)>& written) {
    const Place place = placeOf(destination);
    const Folder folder = openFolder(files, place.folder);
    const int folderNumber = folder.descriptor.number();
    if (std::cmp_greater(bytes.size(), orThrow(files.fileSizeLimit()))) throwSystemError(EFBIG);
    const Replacement replacement = replacementOf(files, folderNumber, place.name);

    TemporaryFile temporary(files, folderNumber);
    put(bytes, place.name, replacement, temporary, written);
    if (folder.canSync) {
        static_cast<void>(uninterrupted([&] { return files.sync(folderNumber); }));
    }
}

}  // namespace quirebind
