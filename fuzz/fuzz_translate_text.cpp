// TranslateText on any text and values: it catches all that happens inside it.
// Bytes after the flag byte: the text, then the values, separated by 0x1E. With flag bit 1 the values
// go in as variants, an empty one as Null.
#include "FuzzInput.h"
#include "frame/Texts.h"
#include <QVariantList>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const qlfuzz::Input in = qlfuzz::split(data, size);
    qlfuzz::useLocale(in.flags);
    const QList<QByteArray> parts = in.bytes.split('\x1e');
    const QString text = QString::fromUtf8(parts.value(0));
    try {
        if (in.flags & 2u) {
            QVariantList values;
            for (qsizetype i = 1; i < parts.size(); ++i)
                values.append(parts[i].isEmpty() ? QVariant() : QVariant(QString::fromUtf8(parts[i])));
            (void)ql::TranslateText(text, values);
        } else {
            QStringList values;
            for (qsizetype i = 1; i < parts.size(); ++i)
                values.append(QString::fromUtf8(parts[i]));
            (void)ql::TranslateText(text, values);
        }
    } catch (...) {
        qlfuzz::fail("an exception left TranslateText", text);
    }
    return 0;
}
