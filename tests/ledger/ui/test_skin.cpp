// The common look: tiled pictures of the Resources folder, the grid colours of the settings with text
// that stays readable, and the placing of dialogs.
#include "TestEnv.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "ui/Skin.h"
#include <QFrame>
#include <QGuiApplication>
#include <QScreen>
#include <QTableView>
#include <QToolButton>

using namespace qltest;

class SkinTest : public DocumentsTest {};

TEST_F(SkinTest, ThePicturesStandInResourcesBesideTheProgram) {
    const QString folder = ql::resourcesFolder();
    ASSERT_FALSE(folder.isEmpty());
    for (const char* name :
         {"maintile.png", "titletle.png", "titlebtn.png", "Selected.png", "chkoff95.png", "chkon95.png"})
        EXPECT_FALSE(ql::skinPicture(QString::fromLatin1(name)).isNull()) << name;
}

TEST_F(SkinTest, SkinFormTilesTheNamedPanelsAndSkipsTheRest) {
    QWidget form;
    auto* body = new QWidget(&form);
    body->setObjectName(QStringLiteral("els_Form"));
    auto* title = new QFrame(&form);
    title->setObjectName(QStringLiteral("els_TitleBar"));
    auto* button = new QToolButton(title);
    button->setObjectName(QStringLiteral("els_TitleButton(2)"));
    auto* other = new QWidget(&form);
    other->setObjectName(QStringLiteral("somethingElse"));
    ql::SkinForm(&form);
    EXPECT_EQ(body->palette().brush(QPalette::Window).style(), Qt::TexturePattern);
    EXPECT_TRUE(body->autoFillBackground());
    EXPECT_EQ(title->palette().brush(QPalette::Window).style(), Qt::TexturePattern);
    EXPECT_EQ(title->palette().color(QPalette::WindowText), QColor(Qt::white));
    EXPECT_TRUE(button->styleSheet().contains(QStringLiteral("titlebtn.png")));
    EXPECT_FALSE(other->autoFillBackground());
    EXPECT_EQ(ql::SkinGreen(), QColor(51, 102, 1));
}

TEST_F(SkinTest, SkinGridTakesTheFourColoursWithReadableText) {
    ql::WriteSetting(QStringLiteral("COLOURS"), QStringLiteral("GridHeader"), QStringLiteral("0,64,0"));
    ql::WriteSetting(QStringLiteral("COLOURS"), QStringLiteral("GridSelectedRow"), QStringLiteral("0,0,128"));
    ql::WriteSetting(QStringLiteral("COLOURS"), QStringLiteral("GridEvenRow"), QStringLiteral("255,255,255"));
    ql::WriteSetting(QStringLiteral("COLOURS"), QStringLiteral("GridOddRow"), QStringLiteral("230,240,220"));
    QTableView grid;
    ql::SkinGrid(&grid, true);
    const QString css = grid.styleSheet();
    EXPECT_TRUE(grid.alternatingRowColors());
    EXPECT_TRUE(
        css.contains(QStringLiteral("QHeaderView::section { background-color: #004000; color: #ffffff;")))
        << css.toStdString();
    EXPECT_TRUE(css.contains(
        QStringLiteral("QTableView::item:selected { background-color: #000080; color: #ffffff; }")));
    EXPECT_TRUE(
        css.contains(QStringLiteral("QTableView::item { background-color: #ffffff; color: #000000; }")));
    EXPECT_TRUE(css.contains(
        QStringLiteral("QTableView::item:alternate { background-color: #e6f0dc; color: #000000; }")));
    EXPECT_TRUE(css.contains(QStringLiteral("Selected.png")));
}

TEST_F(SkinTest, MissingColoursAreBlackAndTheTextTurnsWhite) {
    QTableView grid;
    ql::SkinGrid(&grid, true);
    EXPECT_TRUE(grid.styleSheet().contains(
        QStringLiteral("QTableView::item { background-color: #000000; color: #ffffff; }")));
    EXPECT_EQ(ql::readableOn(QColor(192, 255, 255)), QColor(Qt::black));
    EXPECT_EQ(ql::readableOn(QColor(0, 128, 128)), QColor(Qt::white));
}

TEST_F(SkinTest, CentreFormPlacesADialogRightAndBelowTheCentre) {
    QWidget dialog;
    dialog.resize(300, 200);
    ql::CentreForm(&dialog);
    QScreen* screen = dialog.screen();
    const QRect area = screen->availableGeometry();
    const double perTwip = screen->logicalDotsPerInch() / 1440.0;
    const int x = area.x() + (area.width() - 300) / 2 + int(1207 * perTwip);
    const int y = area.y() + (area.height() - 200) / 2 + int(832 * perTwip);
    EXPECT_EQ(dialog.pos(), QPoint(x, y));
    EXPECT_GT(dialog.pos().x(), area.x() + (area.width() - 300) / 2);
}
