// SQL functions every connection carries, for query texts that relied on the runtime inside SQL.
#include "SqlSupport.h"
#include "runtime/Convert.h"
#include <QByteArray>
#include <cmath>

namespace ql {
namespace {

void resultText(sqlite3_context* ctx, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

// Number to text as the runtime's concatenation prints it: 2 -> "2", 1.5 -> "1.5". A value that a
// Single holds exactly prints with a Single's seven digits, so a Single column reads "1.1", not
// "1.10000002384186". Null gives the empty text, as concatenation with Null does.
void vbstr(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3_value* v = argv[0];
    switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
        resultText(ctx, QString());
        return;
    case SQLITE_INTEGER:
        resultText(ctx, QString::number(sqlite3_value_int64(v)));
        return;
    case SQLITE_FLOAT: {
        const double d = sqlite3_value_double(v);
        const float f = static_cast<float>(d);
        if (std::isfinite(d) && static_cast<double>(f) == d)
            resultText(ctx, CStr(f));
        else
            resultText(ctx, CStr(d));
        return;
    }
    default:
        sqlite3_result_value(ctx, v);
    }
}

bool truthy(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
        return false;
    case SQLITE_INTEGER:
        return sqlite3_value_int64(v) != 0;
    case SQLITE_FLOAT:
        return sqlite3_value_double(v) != 0.0;
    default: {
        const QString s = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(v)));
        if (s.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return true;
        bool ok = false;
        const double d = s.toDouble(&ok);
        return ok && d != 0.0;
    }
    }
}

void iif(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3_result_value(ctx, truthy(argv[0]) ? argv[1] : argv[2]);
}

} // namespace

void registerSqlFunctions(sqlite3* db) {
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "vbstr", 1, flags, nullptr, vbstr, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "iif", 3, flags, nullptr, iif, nullptr, nullptr, nullptr);
}

} // namespace ql
