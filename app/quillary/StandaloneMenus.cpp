#include "StandaloneMenus.h"
#include "OwnReports.h"
#include "data/Backup.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "ledger/frmWage.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include "startup/Menus.h"
#include <QDir>
#include <QFileDialog>

namespace ql {

namespace {

ArchiveChooser& chooser() {
    static ArchiveChooser c;
    return c;
}

QString askArchive(QWidget* owner, bool save, const QString& suggested) {
    if (chooser()) return chooser()(save, suggested);
    QFileDialog dialog(owner, save ? QStringLiteral("Backup Data") : QStringLiteral("Restore Data"),
                       suggested, QStringLiteral("Quillary backups (*.tar)"));
    dialog.setObjectName(save ? QStringLiteral("BackupDialog") : QStringLiteral("RestoreDialog"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (save) {
        dialog.setDefaultSuffix(QStringLiteral("tar"));
        dialog.selectFile(suggested);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return QString();
    return dialog.selectedFiles().first();
}

void tell(const QString& text, const QString& heading, qint32 kind) {
    ShowMessage(text, msg::OKOnly, Firm(), heading, QString(), kind, true);
}

} // namespace

void setArchiveChooser(ArchiveChooser c) {
    chooser() = std::move(c);
}

void BackupDataNow(frmWage& window) {
    QDir().mkpath(BackupFolder());
    const QString file = askArchive(&window, true, QDir(BackupFolder()).filePath(BackupFileName()));
    if (file.isEmpty()) return;
    try {
        const BackupResult r = BackupData(file);
        tell(QStringLiteral("The data was backed up to %1\n(%2).")
                 .arg(QDir::toNativeSeparators(r.file), r.entries.join(QStringLiteral(", "))),
             QStringLiteral("Backup Data"), msg::Information);
    } catch (const VbError& e) {
        tell(e.description(), QStringLiteral("Backup Data"), msg::Stop);
    }
}

void RestoreDataNow(frmWage& window) {
    const QString file = askArchive(&window, false, BackupFolder());
    if (file.isEmpty()) return;
    if (ShowMessage(QStringLiteral("Replace the data with the backup %1?\n\nThe data as it stands now is kept "
                                   "in a safety copy first.")
                        .arg(QDir::toNativeSeparators(file)),
                    msg::YesNo | msg::DefaultButton2, Firm(), QStringLiteral("Restore Data"), QString(),
                    msg::Question, true) != msg::Yes)
        return;
    try {
        const RestoreResult r = RestoreData(file);
        window.screen().reloadEmployees();
        skipErrors([&] { window.screen().SetEmployee(); });
        window.refresh();
        tell(QStringLiteral("The data was restored from %1.\nThe data it replaced is kept in %2.")
                 .arg(QDir::toNativeSeparators(file), QDir::toNativeSeparators(r.safetyCopy)),
             QStringLiteral("Restore Data"), msg::Information);
    } catch (const VbError& e) {
        tell(e.description(), QStringLiteral("Restore Data"), msg::Stop);
    }
}

void installStandaloneMenus(frmWage& w) {
    frmWage* window = &w;
    setStandaloneMenus([window](const QString& name, qint32 startMenu) -> bool {
        const QString entry = name.trimmed();
        switch (startMenu) {
        case 3: // Tools
            if (entry.compare(QLatin1String("Backup Data"), Qt::CaseInsensitive) == 0) {
                BackupDataNow(*window);
                return true;
            }
            if (entry.compare(QLatin1String("Restore Data"), Qt::CaseInsensitive) == 0) {
                RestoreDataNow(*window);
                return true;
            }
            tell(QStringLiteral("%1 opens from the Fernhold main menu, which is not running. Quillary's own "
                                "settings are in Tools: Tax Information and Payday Settings.")
                     .arg(entry),
                 entry, msg::Information);
            return true;
        case 0: // Modules
            if (entry.compare(QLatin1String("Exit"), Qt::CaseInsensitive) == 0) {
                window->close();
                return true;
            }
            tell(QStringLiteral("%1 is another module of the Fernhold suite; it opens from the suite's main "
                                "menu, which is not running.")
                     .arg(entry),
                 entry, msg::Information);
            return true;
        case 1: // Reports
            ShowOwnReports(*window);
            return true;
        default:
            return false;
        }
    });
}

} // namespace ql
