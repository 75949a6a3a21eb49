#pragma once
// Every file the viewer writes for the user (a saved scene, an export, an
// autosave, a picture) goes through here, so that a failure at any step (a
// full disk, a short write, a failed flush or rename, a folder that cannot be
// written, the process killed) leaves the earlier file whole: the bytes go to
// a temporary file in the target's folder, which is written, flushed to disk
// (fsync), renamed over the target, and the folder flushed so that the rename
// itself survives a crash.

#include <sys/types.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace viewer {

/// Says which file could not be written and why, in one line:
/// "cannot write FILE: CAUSE".
class FileWriteError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The system calls the writer makes, so that tests can make any one of them
/// fail as the system would (setting errno).
struct FileCalls {
    int (*mkstemp)(char* pattern);
    ssize_t (*write)(int fd, const void* bytes, size_t count);
    int (*fsync)(int fd);
    int (*close)(int fd);
    int (*rename)(const char* from, const char* to);
};

/// The calls of the system itself.
const FileCalls& systemFileCalls();

/// Replaces the file at `path` with `bytes`, all or nothing. The new file
/// is readable by everyone and writable by its owner (as the umask allows).
/// Throws FileWriteError naming `path` and the cause; the temporary file is
/// gone then, and whatever `path` held before is untouched.
void writeFileAtomically(const std::string& path, std::string_view bytes,
                         const FileCalls& calls = systemFileCalls());

/// Makes `folder` and the folders above it that are missing; throws
/// FileWriteError naming the folder and the cause when it cannot.
void makeFolders(const std::string& folder);

}  // namespace viewer
