#pragma once
// Runs quillary-cli as a user would, in a given documents folder, and captures what it prints.
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace qltest {

struct CliResult {
    int exitCode = -1;
    QString out;
    QString err;
};

CliResult runCli(const QStringList& args, const QString& documentsFolder,
                 const QByteArray& locale = "en_NZ.UTF-8");

} // namespace qltest
