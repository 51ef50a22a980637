#pragma once
// What the fuzz targets share: the first byte picks the locale (bit 0: German, else English (New
// Zealand)) and other options; the rest is the text, read as UTF-8.
#include <QLocale>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace qlfuzz {

struct Input {
    unsigned flags = 0;
    QByteArray bytes;
    QString text() const { return QString::fromUtf8(bytes); }
};

inline Input split(const uint8_t* data, size_t size) {
    Input in;
    if (size == 0) return in;
    in.flags = data[0];
    in.bytes = QByteArray(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size - 1));
    return in;
}

inline void useLocale(unsigned flags) {
    static const QLocale nz(QLocale::English, QLocale::NewZealand);
    static const QLocale de(QLocale::German, QLocale::Germany);
    QLocale::setDefault((flags & 1u) ? de : nz);
}

// A broken promise of the code under test: report it and stop, so the fuzzer keeps the input.
[[noreturn]] inline void fail(const char* what, const QString& text) {
    std::fprintf(stderr, "invariant broken: %s\ninput: %s\n", what, text.toUtf8().constData());
    std::abort();
}

} // namespace qlfuzz
