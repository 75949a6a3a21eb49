// Files the user keeps: a failure at any step of a write leaves the earlier
// file whole and says which file and why.
#include "apps/scene/atomic_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/support/temp_folder.h"

namespace {

using testing_support::contentOf;

using viewer::FileCalls;
using viewer::FileWriteError;
using viewer::writeFileAtomically;

const std::string kEarlier = "the scene as saved before\n";
const std::string kNew = "the scene as it stands now, longer than before\n";

std::size_t filesIn(const std::string& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) ++count;
    return count;
}

// Faults as the system gives them, one call at a time.
ssize_t noSpace(int, const void*, size_t) {
    errno = ENOSPC;
    return -1;
}
/// Writes three bytes at most each time.
ssize_t trickle(int fd, const void* bytes, size_t count) {
    return ::write(fd, bytes, count < 3 ? count : 3);
}
/// Writes a part, then the disk is full.
ssize_t partThenFull(int fd, const void* bytes, size_t count) {
    static bool first = true;
    if (!first) {
        errno = ENOSPC;
        return 0;
    }
    first = false;
    return ::write(fd, bytes, count / 2);
}
int failedFlush(int) {
    errno = EIO;
    return -1;
}
int failedRename(const char*, const char*) {
    errno = EXDEV;
    return -1;
}
int readOnlyFolder(char*) {
    errno = EROFS;
    return -1;
}
/// Writes half of the file, then the process is killed.
ssize_t killedHalfway(int fd, const void* bytes, size_t count) {
    ::write(fd, bytes, count / 2);
    ::kill(::getpid(), SIGKILL);
    return -1;
}

FileCalls with(ssize_t (*write)(int, const void*, size_t)) {
    FileCalls calls = viewer::systemFileCalls();
    calls.write = write;
    return calls;
}

class AtomicFile : public testing::Test {
protected:
    void SetUp() override { target = folder.write("scene.json", kEarlier); }

    /// Writes with `calls`; the message of the failure, or "" when it worked.
    std::string failureOf(const FileCalls& calls, const std::string& path) {
        try {
            writeFileAtomically(path, kNew, calls);
        } catch (const FileWriteError& error) {
            return error.what();
        }
        return "";
    }

    testing_support::TempFolder folder;
    std::string target;
};

TEST_F(AtomicFile, ReplacesTheFileWholeAndLeavesNothingBeside) {
    writeFileAtomically(target, kNew);
    EXPECT_EQ(contentOf(target), kNew);
    EXPECT_EQ(filesIn(folder.path()), 1u);

    // Short writes are no fault: the writer goes on until all is written.
    writeFileAtomically(target, kEarlier, with(trickle));
    EXPECT_EQ(contentOf(target), kEarlier);

    const std::string fresh = folder.path() + "/new.json";
    writeFileAtomically(fresh, kNew);
    EXPECT_EQ(contentOf(fresh), kNew);
    EXPECT_EQ(std::filesystem::status(fresh).permissions() & std::filesystem::perms::others_read,
              std::filesystem::perms::others_read);
}

TEST_F(AtomicFile, AFaultAtAnyStepLeavesTheEarlierFileWholeAndSaysWhy) {
    FileCalls flush = viewer::systemFileCalls();
    flush.fsync = failedFlush;
    FileCalls rename = viewer::systemFileCalls();
    rename.rename = failedRename;
    FileCalls readOnly = viewer::systemFileCalls();
    readOnly.mkstemp = readOnlyFolder;
    const struct {
        const char* what;
        FileCalls calls;
        std::string cause;
    } faults[] = {
        {"a full disk", with(noSpace), std::strerror(ENOSPC)},
        {"a short write, then a full disk", with(partThenFull), std::strerror(ENOSPC)},
        {"a failed flush", flush, "flushing to disk: " + std::string(std::strerror(EIO))},
        {"a failed rename", rename, std::strerror(EXDEV)},
        {"a read-only folder", readOnly, std::strerror(EROFS)},
    };
    for (const auto& fault : faults) {
        SCOPED_TRACE(fault.what);
        const std::string message = failureOf(fault.calls, target);
        EXPECT_EQ(message.rfind("cannot write " + target + ": ", 0), 0u) << message;
        EXPECT_NE(message.find(fault.cause), std::string::npos) << message;
        EXPECT_EQ(contentOf(target), kEarlier);
        EXPECT_EQ(filesIn(folder.path()), 1u) << "the temporary file is removed";
    }
}

TEST_F(AtomicFile, AFolderInTheWayOrAMissingFolderIsRefused) {
    const std::string inTheWay = folder.path() + "/pictures";
    std::filesystem::create_directory(inTheWay);
    EXPECT_EQ(failureOf(viewer::systemFileCalls(), inTheWay),
              "cannot write " + inTheWay + ": it is a folder");
    EXPECT_TRUE(std::filesystem::is_directory(inTheWay));

    const std::string missing = folder.path() + "/missing/scene.json";
    EXPECT_NE(failureOf(viewer::systemFileCalls(), missing).find(std::strerror(ENOENT)),
              std::string::npos);
    viewer::makeFolders(folder.path() + "/missing");
    writeFileAtomically(missing, kNew);
    EXPECT_EQ(contentOf(missing), kNew);
}

TEST_F(AtomicFile, AProcessKilledInTheMiddleOfAWriteLeavesTheEarlierFileWhole) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        try {
            writeFileAtomically(target, kNew, with(killedHalfway));
        } catch (...) {
        }
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_EQ(contentOf(target), kEarlier);
}

}  // namespace
