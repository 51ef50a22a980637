#pragma once
// A fresh documents folder, a fresh log run, scripted dialogs and New Zealand as the system's
// country for every test of the frame.
#include "TestEnv.h"
#include "frame/ErrorLog.h"
#include "frame/Messages.h"
#include "frame/ProfileFile.h"
#include "frame/ScriptedDialogs.h"
#include <QFile>
#include <QLocale>

namespace qltest {

class FrameTest : public DocumentsTest {
protected:
    ql::ScriptedDialogs scripted;

    void SetUp() override {
        ql::resetErrorLogForTesting();
        ql::setDialogs(&scripted);
        ql::setTerritorySource([] { return QLocale::NewZealand; });
    }
    void TearDown() override {
        ql::setDialogs(nullptr);
        ql::setTerritorySource({});
        ql::resetErrorLogForTesting();
    }

    // Writes the family file in the common folder and returns its path.
    QString writeIni(const QByteArray& contents) const {
        docs->commonFolder();
        return docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"), contents);
    }
    QString iniPath() const { return docs->path() + QStringLiteral("/Fernhold/Common/Fernhold.ini"); }
    QString logPath() const { return docs->path() + QStringLiteral("/Fernhold/Common/FHErrors.log"); }

    static QByteArray readAll(const QString& path) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) return QByteArray();
        return f.readAll();
    }
    QStringList logLines() const {
        QStringList lines = QString::fromUtf8(readAll(logPath())).split(QStringLiteral("\r\n"));
        if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
        return lines;
    }
};

} // namespace qltest
