#include "Skin.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/Trap.h"
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScreen>
#include <QTableView>
#include <QWidget>

namespace ql {

namespace {
QColor colourOf(const ColourSetting& c) {
    return QColor(qBound(0, c.red, 255), qBound(0, c.green, 255), qBound(0, c.blue, 255));
}

void tile(QWidget* w, const QPixmap& picture) {
    if (!w || picture.isNull()) return;
    QPalette p = w->palette();
    p.setBrush(QPalette::Window, QBrush(picture));
    w->setPalette(p);
    w->setAutoFillBackground(true);
}

// Widgets by the names of the table; a control array's members are named "name(i)".
QList<QWidget*> named(QWidget* form, const QString& name) {
    QList<QWidget*> found;
    if (form->objectName() == name) found.append(form);
    for (QWidget* w : form->findChildren<QWidget*>()) {
        const QString n = w->objectName();
        if (n == name || (n.startsWith(name + QLatin1Char('(')) && n.endsWith(QLatin1Char(')'))))
            found.append(w);
    }
    return found;
}

QString cssColour(const QColor& c) {
    return c.name(QColor::HexRgb);
}
} // namespace

QString resourcesFolder() {
    QStringList candidates;
    skipErrors([&] { candidates << ProgramPath() + QStringLiteral("Resources/"); });
    const QString exe = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    if (!exe.isEmpty()) {
        candidates << exe + QStringLiteral("/Resources/");
        candidates << QDir::cleanPath(exe + QStringLiteral("/../share/quillary/Resources")) +
                          QLatin1Char('/');
    }
    for (const QString& c : candidates)
        if (QFileInfo(c).isDir()) return c;
    return {};
}

QPixmap skinPicture(const QString& fileName) {
    const QString folder = resourcesFolder();
    if (folder.isEmpty()) return {};
    return QPixmap(folder + fileName);
}

QColor SkinGreen() {
    return QColor(51, 102, 1);
}

QColor readableOn(const QColor& background) {
    const double luminance =
        0.299 * background.red() + 0.587 * background.green() + 0.114 * background.blue();
    return luminance < 140 ? QColor(Qt::white) : QColor(Qt::black);
}

void SkinForm(QWidget* form) {
    if (!form) return;
    const QPixmap mainTile = skinPicture(QStringLiteral("maintile.png"));
    const QPixmap titleTile = skinPicture(QStringLiteral("titletle.png"));
    const QString titleButton = resourcesFolder() + QStringLiteral("titlebtn.png");
    for (const char* name :
         {"vse_MainTile", "els_Form", "els_FormSideBar", "Frame1", "els_FooterBar", "vseDataEntryBack",
          "vseDateBack", "vseCmdBack", "vseNoEdit", "vseHistoryBack", "vseCategoryBack", "vse_Options"})
        for (QWidget* w : named(form, QString::fromLatin1(name)))
            tile(w, mainTile);
    for (const char* name : {"els_TitleBar", "els_Buttons"})
        for (QWidget* w : named(form, QString::fromLatin1(name))) {
            QPalette p = w->palette();
            p.setColor(QPalette::Window, SkinGreen());
            p.setColor(QPalette::WindowText, Qt::white);
            w->setPalette(p);
            w->setAutoFillBackground(true);
            tile(w, titleTile);
        }
    const bool haveButton = QFileInfo::exists(titleButton);
    for (const char* name : {"els_TitleButton", "vseButton", "els_FormButtons"})
        for (QWidget* w : named(form, QString::fromLatin1(name))) {
            QString css =
                QStringLiteral(
                    "color: white; font-weight: bold; padding: 4px 14px; border: 1px solid #d2e6b4; "
                    "border-radius: 5px; background-color: %1;")
                    .arg(cssColour(SkinGreen().lighter(115)));
            if (haveButton)
                css += QStringLiteral("border-image: url(%1) 0 0 0 0 stretch stretch;").arg(titleButton);
            w->setStyleSheet(w->metaObject()->className() + QStringLiteral(" { ") + css +
                             QStringLiteral(" } ") + w->metaObject()->className() +
                             QStringLiteral(":focus { border: 2px solid #ffe680; }"));
        }
}

void SkinGrid(QTableView* grid, bool flag) {
    if (!grid) return;
    try {
        grid->setAlternatingRowColors(flag);
        const QColor header = colourOf(GridHeader());
        const QColor selected = colourOf(GridSelectedRow());
        const QColor even = colourOf(GridEvenRow());
        const QColor odd = colourOf(GridOddRow());
        const QString sheen = resourcesFolder() + QStringLiteral("Selected.png");
        QString headerPicture;
        if (QFileInfo::exists(sheen))
            headerPicture =
                QStringLiteral("background-image: url(%1); background-repeat: repeat-x;").arg(sheen);
        grid->setStyleSheet(
            QStringLiteral(
                "QTableView { background-color: %1; gridline-color: %2; }"
                "QTableView::item { background-color: %3; color: %4; }"
                "QTableView::item:alternate { background-color: %5; color: %6; }"
                "QTableView::item:selected { background-color: %7; color: %8; }"
                "QTableView QLineEdit, QTableView QComboBox { background-color: white; color: black; }"
                "QHeaderView::section { background-color: %1; color: %9; %10 padding: 3px; "
                "border: 0px; border-right: 1px solid %2; border-bottom: 1px solid %2; }")
                .arg(cssColour(header), cssColour(readableOn(header).darker(100)), cssColour(even),
                     cssColour(readableOn(even)), cssColour(odd), cssColour(readableOn(odd)),
                     cssColour(selected), cssColour(readableOn(selected)), cssColour(readableOn(header)),
                     headerPicture));
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("SkinGrid"));
    }
}

void CentreForm(QWidget* form) {
    if (!form) return;
    QScreen* screen = form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect area = screen->availableGeometry();
    const double perTwip = screen->logicalDotsPerInch() / 1440.0;
    const QSize size = form->frameGeometry().size().isValid() ? form->frameGeometry().size() : form->size();
    int x = area.x() + (area.width() - size.width()) / 2 + int(2415 / 2 * perTwip);
    int y = area.y() + (area.height() - size.height()) / 2 + int(1665 / 2 * perTwip);
    // Never past the working area's edge.
    x = qMax(area.x(), qMin(x, area.right() - size.width()));
    y = qMax(area.y(), qMin(y, area.bottom() - size.height()));
    form->move(x, y);
}

QSize SizeOnScreen(const QSize& wanted) {
    QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? wanted.boundedTo(screen->availableGeometry().size() - QSize(16, 40)) : wanted;
}

} // namespace ql
