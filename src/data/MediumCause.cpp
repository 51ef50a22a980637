#include "MediumCause.h"
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <sys/statvfs.h>
#include <unistd.h>

namespace ql {

namespace {

// Less room than this after a failed write is taken for a full disk: SQLite's log grows by pages,
// and the last few kilobytes of a disk are often kept for others.
constexpr unsigned long long kTooLittleRoom = 1024ULL * 1024ULL;

MediumCause causeOf(const QByteArray& target) {
    struct statvfs fs {};
    if (::statvfs(target.constData(), &fs) == 0) {
        if (fs.f_flag & ST_RDONLY) return MediumCause::ReadOnly;
        if (static_cast<unsigned long long>(fs.f_bavail) * fs.f_frsize < kTooLittleRoom) return MediumCause::Full;
    }
    if (::access(target.constData(), W_OK) != 0) {
        if (errno == EROFS) return MediumCause::ReadOnly;
        if (errno == EACCES || errno == EPERM) return MediumCause::NotAllowed;
    }
    return MediumCause::None;
}

} // namespace

MediumCause mediumCause(const QString& path) {
    if (path.isEmpty()) return MediumCause::None;
    const QFileInfo file(path);
    // The log and index files are made in the file's folder, so the folder counts as much as the file.
    if (file.exists()) {
        const MediumCause cause = causeOf(QFile::encodeName(file.absoluteFilePath()));
        if (cause != MediumCause::None) return cause;
    }
    return causeOf(QFile::encodeName(file.absolutePath()));
}

} // namespace ql
