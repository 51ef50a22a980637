#pragma once
// A fresh documents folder with the template's modules database, the program's settings pointing at
// the source tree's help pages, and a form that records what the menus ask of it.
#include "TestEnv.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "startup/Menus.h"
#include "startup/PHWage.h"
#include <QDir>
#include <QFileInfo>
#include <memory>

namespace qltest {

struct RecordingHost : ql::MenuHost {
    QString formTitle = QStringLiteral("Quillary");
    QList<int> popups;
    QString title() const override { return formTitle; }
    void popupTitleMenu(int button) override { popups << button; }
};

// One MenuSelect as a client sees it, with StartMenu read when it came.
struct Selection {
    QString name;
    qint32 help = 0;
    qint32 alt = 0;
    qint32 startMenu = -1;
};

class MenusTest : public DocumentsTest {
protected:
    void SetUp() override {
        docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"),
                        QByteArray("[FERNHOLD]\r\nProgramDirectory=") + QByteArray(QUILLARY_SOURCE_DIR) +
                            "/resources\r\n[WINDOWS]\r\nCountry=64\r\n");
        ql::setApp(&app);
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        QDir().mkpath(QFileInfo(ql::ModuleFileName()).absolutePath());
        modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName());
        // A client of the object: every choice is recorded with the request kind.
        connector = std::make_unique<ql::qlConnector>();
        QObject::connect(connector->Quillary(), &ql::PHWage::MenuSelect,
                         [this](const QString& n, qint32 h, qint32 a) {
                             selections.append({n, h, a, connector->Quillary()->StartMenu()});
                         });
        hourglass.clear();
        ql::setHourglass([this](bool on) { hourglass << on; });
        ql::setHelpViewer({});
    }
    void TearDown() override {
        ql::setHourglass({});
        connector.reset();
        modules.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    QStringList errorsReported() const {
        QStringList out;
        for (const auto& c : dialogs.calls)
            if (c.kind == ql::DialogCall::Error)
                out << c.heading.trimmed() + QStringLiteral(": ") + c.message;
        return out;
    }

    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    ql::Database modules;
    std::unique_ptr<ql::qlConnector> connector;
    QList<Selection> selections;
    QList<bool> hourglass;
    RecordingHost form;
};

} // namespace qltest
