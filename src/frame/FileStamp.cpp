#include "FileStamp.h"
#include <QFile>
#include <sys/stat.h>
#include <time.h>

namespace ql {

namespace {

// Longer than any file system's timestamp granularity (a kernel tick is at most 10 ms).
constexpr std::int64_t SettleNs = 100'000'000;

std::int64_t ns(const timespec& t) {
    return std::int64_t(t.tv_sec) * 1'000'000'000 + t.tv_nsec;
}

} // namespace

FileStamp FileStamp::of(const QString& path) {
    return of(QFile::encodeName(path));
}

FileStamp FileStamp::of(const QByteArray& localPath) {
    FileStamp s;
    struct stat st;
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    if (::stat(localPath.constData(), &st) != 0) {
        // Nothing there: that lasts until a file appears, which gives a new stamp.
        s.settled = true;
        return s;
    }
    s.exists = true;
    s.size = std::int64_t(st.st_size);
    s.mtimeNs = ns(st.st_mtim);
    s.ctimeNs = ns(st.st_ctim);
    s.inode = std::uint64_t(st.st_ino);
    s.device = std::uint64_t(st.st_dev);
    const std::int64_t latest = s.mtimeNs > s.ctimeNs ? s.mtimeNs : s.ctimeNs;
    s.settled = ns(now) - latest >= SettleNs;
    return s;
}

bool FileStamp::sameAs(const FileStamp& o) const {
    return settled && o.settled && exists == o.exists && size == o.size && mtimeNs == o.mtimeNs &&
           ctimeNs == o.ctimeNs && inode == o.inode && device == o.device;
}

} // namespace ql
