#pragma once
// The common look of every screen: tiled pictures from the Resources folder on the named panels of a
// form (SkinForm), the grid colours of the settings (SkinGrid), and the placing of dialogs (CentreForm).
#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>

class QTableView;
class QWidget;

namespace ql {

// The folder of the pictures: Resources under ProgramDirectory, else the installed share folder
// beside the program's bin folder. Ends with "/"; empty when neither exists.
QString resourcesFolder();
// A picture of the folder by its file name; a null pixmap when it is missing.
QPixmap skinPicture(const QString& fileName);

// The skin's green of the title band (red 51, green 102, blue 1).
QColor SkinGreen();

// Applies the pictures to whichever of the known panel names the form has; unknown names and missing
// pictures are passed over.
void SkinForm(QWidget* form);

// The grid colours of the settings GridHeader, GridSelectedRow, GridEvenRow and GridOddRow, with the
// heading sheen; the text of each takes black or white, whichever reads on it.
void SkinGrid(QTableView* grid, bool flag = true);

// Black or white, whichever is readable on the colour.
QColor readableOn(const QColor& background);

// Centres a dialog over the working area the suite's menu leaves free: the screen's centre, then
// 2415 / 2 twips to the right and 1665 / 2 twips down.
void CentreForm(QWidget* form);

// The wanted size of a window, no larger than the screen's working area leaves for it with its frame.
QSize SizeOnScreen(const QSize& wanted);

} // namespace ql
