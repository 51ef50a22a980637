#pragma once
// What a file looked like when it was last read: its size, modification and change times to the
// nanosecond, inode and device. A remembered reading of a file stands only while the stamp is the same.
//
// A file written within the clock's resolution of the moment it is read can change again without a
// new time, so a stamp taken that close to the file's last change is not trusted: such a file is read
// afresh at every use until its last change lies further back.
#include <QString>
#include <cstdint>

namespace ql {

struct FileStamp {
    bool exists = false;
    std::int64_t size = 0;
    std::int64_t mtimeNs = 0;
    std::int64_t ctimeNs = 0;
    std::uint64_t inode = 0;
    std::uint64_t device = 0;
    bool settled = false; // the last change lies far enough back for the stamp to be trusted

    // The stamp of the file now (one stat call). A missing file gives exists false.
    static FileStamp of(const QString& path);
    static FileStamp of(const QByteArray& localPath);

    // True when both stamps are settled and describe the same file, unchanged.
    bool sameAs(const FileStamp& o) const;
};

} // namespace ql
