#include "metadata/Streams/FileReplacement.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/FileHandle.h"
#include "metadata/Streams/TempFile.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ImagingFramework {

namespace fs = std::filesystem;

fs::path AbsoluteName(const fs::path& name) {
    std::error_code error;
    fs::path absolute = fs::absolute(name, error);
    return error ? name : absolute;
}

fs::path FollowLinks(const fs::path& name) {
    constexpr int depthLimit = 40; // as the system's own
    fs::path current = name;
    for (int depth = 0; depth < depthLimit; ++depth) {
        std::error_code error;
        const fs::path next = fs::read_symlink(current, error);
        if (error) {
            break;
        }
        current = current.parent_path() / next; // an absolute `next` stands alone
    }
    return current;
}

std::uint32_t DefaultFileMode() {
    // The mask can only be asked for by changing it, which other threads would see; the process status tells it.
    std::ifstream status("/proc/self/status");
    const std::string key = "Umask:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) {
            const std::size_t digits = line.find_first_of("01234567", key.size());
            std::uint32_t mask = 0;
            if (digits != std::string::npos &&
                std::from_chars(line.data() + digits, line.data() + line.size(), mask, 8).ec == std::errc()) {
                return 0666U & ~mask;
            }
        }
    }
    const mode_t mask = ::umask(022);
    ::umask(mask);
    return 0666U & ~static_cast<std::uint32_t>(mask);
}

int CopyPermissions(const fs::path& model, const fs::path& file) {
    struct stat status {};
    std::uint32_t mode = 0;
    if (::stat(model.c_str(), &status) == 0) {
        mode = static_cast<std::uint32_t>(status.st_mode) & 0777U;
        // Best effort: only a privileged process may give a file away.
        if ((status.st_uid != ::geteuid() || status.st_gid != ::getegid()) &&
            ::chown(file.c_str(), status.st_uid, status.st_gid) != 0 && errno != EPERM) {
            return errno;
        }
    } else {
        mode = DefaultFileMode();
    }
    return ::chmod(file.c_str(), static_cast<mode_t>(mode)) == 0 ? 0 : errno;
}

namespace {

int CopyBesideAndRename(const fs::path& file, const fs::path& target) {
    fs::path folder = target.parent_path();
    TempFile copy(folder.empty() ? fs::path(".") : folder, "IMG", ".tmp", false, true);
    FileHandle source;
    if (const int error = source.Open(file, O_RDONLY)) {
        return error;
    }
    if (const int error = CopyFileData(source, copy.GetHandle())) {
        return error;
    }
    if (const int error = copy.GetHandle().Close()) {
        return error;
    }
    if (const int error = CopyPermissions(file, copy.GetFilenameRef())) {
        return error;
    }
    if (std::rename(copy.GetFilenameRef().c_str(), target.c_str()) != 0) {
        return errno;
    }
    copy.SetDeleteAutomatically(false);
    ::unlink(file.c_str());
    return 0;
}

} // namespace

int ReplaceFile(const fs::path& file, const fs::path& target) {
    if (std::rename(file.c_str(), target.c_str()) == 0) {
        return 0;
    }
    if (errno != EXDEV) {
        return errno;
    }
    try {
        return CopyBesideAndRename(file, target);
    } catch (const CreateTempFileException&) {
        return EACCES;
    }
}

} // namespace ImagingFramework
