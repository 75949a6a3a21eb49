#include "apps/scene/atomic_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace viewer {

namespace {

/// rw-r--r--, as an editor would make a new file, less what the umask takes.
constexpr mode_t kFileMode = 0644;

std::string failure(const std::string& path, const std::string& cause) {
    return "cannot write " + path + ": " + cause;
}

std::string errnoText(int error) { return std::strerror(error); }

std::string folderOf(const std::string& path) {
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    return parent.empty() ? "." : parent.string();
}

mode_t umaskNow() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return mask;
}

/// The temporary file until it is renamed: closed and removed on any way out.
class TemporaryFile {
public:
    TemporaryFile(const std::string& target, const FileCalls& calls) : calls_(calls) {
        // A name of the target's own, in its folder, so that the rename stays
        // within one file system and a stale one is easy to tell.
        path_ = target + ".tmp-XXXXXX";
        fd_ = calls_.mkstemp(path_.data());
        created_ = fd_ >= 0;
    }
    ~TemporaryFile() {
        if (fd_ >= 0) calls_.close(fd_);
        if (created_ && !renamed_) ::unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool created() const { return created_; }
    int fd() const { return fd_; }
    const std::string& path() const { return path_; }

    /// Closes the file; false (errno set) when the close reports an error.
    bool close() {
        const int fd = fd_;
        fd_ = -1;
        return calls_.close(fd) == 0;
    }
    void markRenamed() { renamed_ = true; }

private:
    const FileCalls& calls_;
    std::string path_;
    int fd_ = -1;
    bool created_ = false;
    bool renamed_ = false;
};

/// Writes all of `bytes`, going on after short writes and interruptions;
/// false (errno set) on an error, or ENOSPC when nothing more goes in.
bool writeAll(int fd, std::string_view bytes, const FileCalls& calls) {
    while (!bytes.empty()) {
        const ssize_t written = calls.write(fd, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (written == 0) {
            errno = ENOSPC;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Flushes the folder's entry of the renamed file; a folder that cannot be
/// opened for it (some file systems refuse) leaves the file written all the same.
void flushFolder(const std::string& folder, const FileCalls& calls) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    calls.fsync(fd);
    ::close(fd);
}

}  // namespace

const FileCalls& systemFileCalls() {
    static const FileCalls calls = {::mkstemp, ::write, ::fsync, ::close, ::rename};
    return calls;
}

void writeFileAtomically(const std::string& path, std::string_view bytes, const FileCalls& calls) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw FileWriteError(failure(path, "it is a folder"));

    TemporaryFile file(path, calls);
    if (!file.created())
        throw FileWriteError(
            failure(path, "cannot create a file in " + folderOf(path) + ": " + errnoText(errno)));
    if (::fchmod(file.fd(), kFileMode & ~umaskNow()) != 0 || !writeAll(file.fd(), bytes, calls))
        throw FileWriteError(failure(path, errnoText(errno)));
    if (calls.fsync(file.fd()) != 0)
        throw FileWriteError(failure(path, "flushing to disk: " + errnoText(errno)));
    if (!file.close()) throw FileWriteError(failure(path, "closing: " + errnoText(errno)));
    if (calls.rename(file.path().c_str(), path.c_str()) != 0)
        throw FileWriteError(failure(path, "renaming " + file.path() + ": " + errnoText(errno)));
    file.markRenamed();
    flushFolder(folderOf(path), calls);
}

void makeFolders(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw FileWriteError("cannot make the folder " + folder + ": " + error.message());
}

}  // namespace viewer
