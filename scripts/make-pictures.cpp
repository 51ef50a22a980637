// Draws the program's own pictures: the tiled backgrounds and button faces of the skin, and the
// desktop icon. Run once by hand; the PNG files it writes are kept in the repository.
//   g++ -std=c++20 -fPIC scripts/make-pictures.cpp $(pkg-config --cflags --libs Qt6Gui) -o /tmp/make-pictures
//   QT_QPA_PLATFORM=offscreen /tmp/make-pictures resources
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <cmath>

namespace {

// A pale, faintly grained paper tile: readable black text on it is the point.
QImage mainTile() {
    QImage img(128, 128, QImage::Format_RGB32);
    img.fill(QColor(236, 242, 226));
    QRandomGenerator rng(20260601);
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) {
            const int n = int(rng.bounded(7)) - 3;
            // A soft diagonal weave that tiles without a seam (periods divide 128).
            const double weave = 2.0 * std::sin((x + y) * 2 * M_PI / 32.0) + 1.5 * std::sin((x - y) * 2 * M_PI / 64.0);
            const int d = n + int(weave);
            const QColor c(236 + d, 242 + d, 226 + d);
            img.setPixelColor(x, y, c);
        }
    return img;
}

// The title band: the skin's dark green with a faint horizontal sheen, tiled sideways.
QImage titleTile() {
    QImage img(64, 40, QImage::Format_RGB32);
    QPainter p(&img);
    QLinearGradient g(0, 0, 0, 40);
    g.setColorAt(0.0, QColor(78, 130, 30));
    g.setColorAt(0.45, QColor(51, 102, 1));
    g.setColorAt(1.0, QColor(34, 74, 0));
    p.fillRect(img.rect(), g);
    p.setPen(QColor(255, 255, 255, 24));
    for (int x = 0; x < 64; x += 4)
        p.drawLine(x, 0, x, 39);
    return img;
}

// A title button's face: a rounded, slightly lighter green.
QImage titleButton() {
    QImage img(96, 32, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 0, 32);
    g.setColorAt(0.0, QColor(104, 156, 52));
    g.setColorAt(1.0, QColor(44, 92, 8));
    p.setBrush(g);
    p.setPen(QPen(QColor(210, 230, 180), 1.0));
    p.drawRoundedRect(QRectF(0.5, 0.5, 95, 31), 6, 6);
    return img;
}

// The grid's heading sheen: translucent, so the heading colour of the settings shows through.
QImage selectedTile() {
    QImage img(8, 24, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    QLinearGradient g(0, 0, 0, 24);
    g.setColorAt(0.0, QColor(255, 255, 255, 70));
    g.setColorAt(0.5, QColor(255, 255, 255, 10));
    g.setColorAt(1.0, QColor(0, 0, 0, 40));
    p.fillRect(img.rect(), g);
    return img;
}

QImage checkBox(bool on) {
    QImage img(16, 16, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(51, 102, 1), 1.5));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 2, 2);
    if (on) {
        p.setPen(QPen(QColor(51, 102, 1), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath tick;
        tick.moveTo(4, 8.5);
        tick.lineTo(7, 11.5);
        tick.lineTo(12, 4.5);
        p.drawPath(tick);
    }
    return img;
}

// The program's icon: a green ledger page with a quill and a dollar line.
QImage icon(int size) {
    QImage img(size, size, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 256.0, size / 256.0);
    // The book.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(34, 74, 0));
    p.drawRoundedRect(QRectF(28, 20, 200, 220), 18, 18);
    p.setBrush(QColor(246, 248, 238));
    p.drawRoundedRect(QRectF(44, 32, 172, 196), 10, 10);
    // Ruled lines with figures.
    p.setPen(QPen(QColor(150, 180, 120), 4));
    for (int y = 70; y <= 200; y += 26)
        p.drawLine(60, y, 200, y);
    p.setPen(QPen(QColor(51, 102, 1), 10, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 5; ++i) {
        const int y = 62 + i * 26;
        p.drawLine(150 - (i % 2) * 14, y, 196, y);
    }
    // The quill.
    QPainterPath feather;
    feather.moveTo(70, 214);
    feather.cubicTo(90, 150, 150, 70, 232, 28);
    feather.cubicTo(200, 90, 150, 150, 70, 214);
    p.setPen(QPen(QColor(120, 60, 10), 3));
    p.setBrush(QColor(232, 196, 96));
    p.drawPath(feather);
    p.setPen(QPen(QColor(120, 60, 10), 4, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(62, 230), QPointF(182, 92));
    return img;
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    const QString root = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("resources");
    const QString res = root + QStringLiteral("/Resources/");
    bool ok = mainTile().save(res + QStringLiteral("maintile.png"));
    ok &= titleTile().save(res + QStringLiteral("titletle.png"));
    ok &= titleButton().save(res + QStringLiteral("titlebtn.png"));
    ok &= selectedTile().save(res + QStringLiteral("Selected.png"));
    ok &= checkBox(false).save(res + QStringLiteral("chkoff95.png"));
    ok &= checkBox(true).save(res + QStringLiteral("chkon95.png"));
    ok &= icon(256).save(root + QStringLiteral("/desktop/quillary.png"));
    ok &= icon(48).save(root + QStringLiteral("/desktop/quillary-48.png"));
    ok &= icon(48).save(res + QStringLiteral("quillary.png")); // the window's own icon
    return ok ? 0 : 1;
}
