#include "ranvel/platform/gui/wholefile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>

namespace ranvel {

namespace fs = std::filesystem;

std::string WriteFailureReason(int error)
{
    const std::string said = std::strerror(error);
    if (error == ENOSPC || error == EDQUOT) return "the disk is full (" + said + ")";
    return said;
}

bool WriteAll(int fd, const std::string& bytes, std::string& reason)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            // A write that takes nothing without an error is a full disk
            // by another name.
            reason = WriteFailureReason(n < 0 ? errno : ENOSPC);
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    // Some file systems only find out at the flush that the blocks are
    // not there.
    if (::fsync(fd) != 0 && errno != EINVAL && errno != EROFS) {
        reason = WriteFailureReason(errno);
        return false;
    }
    return true;
}

bool PutInPlace(int fd, const std::string& work, const std::string& target, const std::string& bytes,
                std::string& reason)
{
    bool written = WriteAll(fd, bytes, reason);
    struct stat old {};
    if (written && ::stat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode) && ::fchmod(fd, old.st_mode & 07777) != 0) {
        reason = WriteFailureReason(errno);
        written = false;
    }
    if (::close(fd) != 0 && written) {
        reason = WriteFailureReason(errno);
        written = false;
    }
    if (written && std::rename(work.c_str(), target.c_str()) != 0) {
        reason = WriteFailureReason(errno);
        written = false;
    }
    if (!written) ::unlink(work.c_str());
    return written;
}

bool WriteFileWhole(const std::string& target, const std::string& bytes, unsigned mode, std::string& error)
{
    const fs::path path(target);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    auto fail = [&](const std::string& reason) {
        error = "'" + target + "' could not be written: " + reason;
        return false;
    };

    // A name of its own in the same folder, so that the last step is a
    // rename on one disk; made exclusively, never through a link.
    std::random_device seed;
    std::string work;
    int fd = -1;
    for (int attempt = 0; attempt < 50 && fd < 0; ++attempt) {
        work = (folder / ("." + path.filename().string() + "." + std::to_string(seed() % 1000000) + ".part")).string();
        fd = ::open(work.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode & 07777);
        if (fd < 0 && errno != EEXIST) return fail(WriteFailureReason(errno));
    }
    if (fd < 0) return fail("no work file could be made beside it");

    std::string reason;
    if (!PutInPlace(fd, work, target, bytes, reason)) return fail(reason);
    return true;
}

bool SameAsWritten(const std::string& path, const std::string& bytes, std::string& error)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) {
        error = "'" + path + "' can't be read back: " + std::strerror(errno);
        return false;
    }
    struct stat st {};
    std::string back;
    bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_uid == ::geteuid() && st.st_nlink == 1 &&
              static_cast<std::size_t>(st.st_size) == bytes.size();
    if (ok) {
        back.resize(bytes.size());
        std::size_t done = 0;
        while (done < back.size()) {
            const ssize_t n = ::read(fd, back.data() + done, back.size() - done);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;
            done += static_cast<std::size_t>(n);
        }
        char more;
        ok = done == back.size() && back == bytes && ::read(fd, &more, 1) == 0;
    }
    ::close(fd);
    if (!ok) error = "'" + path + "' is not the file that was written";
    return ok;
}

}  // namespace ranvel
