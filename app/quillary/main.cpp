// The desktop program. Start-up proper comes with the main screen; until then it says what it can do.
#include <QApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QTextStream(stdout) << "Quillary: the desktop screens are not built yet; see quillary-cli help.\n";
    return 0;
}
