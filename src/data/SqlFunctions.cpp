// SQL functions every connection carries, for query texts that relied on the runtime inside SQL.
#include "SqlSupport.h"
#include "FieldValue.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <cstring>
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

// cursums(kinds, x1, ..., xn) adds up each of its n columns exactly, as a loop over cells would: each
// value as the Currency that a field of its kind reads (kinds holds one letter a column: 'S' a
// Single, any other a Currency or Double, to four decimals half to even), the totals in
// ten-thousandths. Nulls and texts that are no number count nothing. The result is a blob of n
// 64-bit totals in the machine's byte order; an overflow is an error.
struct CurrencySums {
    std::int64_t raw[16];
    int count;
    bool failed;
};

void cursumsStep(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    auto* sums = static_cast<CurrencySums*>(sqlite3_aggregate_context(ctx, sizeof(CurrencySums)));
    if (!sums || sums->failed) return;
    const int n = argc - 1;
    if (n > 16) {
        sums->failed = true;
        sqlite3_result_error(ctx, "cursums takes at most 16 columns", -1);
        return;
    }
    sums->count = n;
    const char* kinds = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
    const int kindCount = kinds ? int(std::strlen(kinds)) : 0;
    try {
        for (int i = 0; i < n; ++i) {
            const FieldType kind = i < kindCount && kinds[i] == 'S' ? FieldType::Single : FieldType::Currency;
            if (const auto amount = storedCurrency(kind, argv[i + 1]))
                sums->raw[i] = (Currency::fromRaw(sums->raw[i]) + *amount).raw();
        }
    } catch (const VbError& e) {
        sums->failed = true;
        const QByteArray text = e.description().toUtf8();
        sqlite3_result_error(ctx, text.constData(), int(text.size()));
    }
}

void cursumsFinal(sqlite3_context* ctx) {
    auto* sums = static_cast<CurrencySums*>(sqlite3_aggregate_context(ctx, 0));
    if (sums && sums->failed) return;
    if (!sums || sums->count == 0) {
        sqlite3_result_zeroblob(ctx, 0);
        return;
    }
    sqlite3_result_blob(ctx, sums->raw, int(sizeof(std::int64_t)) * sums->count, SQLITE_TRANSIENT);
}

} // namespace

void registerSqlFunctions(sqlite3* db) {
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "vbstr", 1, flags, nullptr, vbstr, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "iif", 3, flags, nullptr, iif, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "cursums", -1, flags, nullptr, nullptr, cursumsStep, cursumsFinal, nullptr);
}

} // namespace ql
