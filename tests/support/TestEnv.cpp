#include "TestEnv.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdlib>

namespace qltest {

TempDocuments::TempDocuments() {
    m_hadPrevious = qEnvironmentVariableIsSet("FERNHOLD_DOCUMENTS");
    m_previous = qgetenv("FERNHOLD_DOCUMENTS");
    qputenv("FERNHOLD_DOCUMENTS", m_dir.path().toLocal8Bit());
}

TempDocuments::~TempDocuments() {
    if (m_hadPrevious)
        qputenv("FERNHOLD_DOCUMENTS", m_previous);
    else
        qunsetenv("FERNHOLD_DOCUMENTS");
}

QString TempDocuments::commonFolder() const {
    const QString folder = m_dir.path() + QStringLiteral("/Fernhold/Common");
    QDir().mkpath(folder);
    return folder;
}

QString TempDocuments::writeFile(const QString& relativePath, const QByteArray& contents) const {
    const QString full = m_dir.path() + QLatin1Char('/') + relativePath;
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile f(full);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        ADD_FAILURE() << "cannot write " << full.toStdString();
    f.write(contents);
    return full;
}

} // namespace qltest
