// A pay leaves with the figures its lines give. For employees of several intervals, tax codes and
// KiwiSaver choices, a first pay (whose add could not see its gross yet) is committed in each way
// a pay can leave: `commit`, `post` then `commit`, and a pay run that takes the pay as it stands.
// Each must end with the figures of a twin employee's first pay that was saved through an edit of
// its line, which recalculates the whole pay, before its commit.
#include "IntegritySupport.h"
#include "frame/Settings.h"
#include <QJsonArray>
#include <QJsonObject>

using namespace qltest;

namespace {

struct Kind {
    const char* interval;
    const char* code;
    const char* pay; // "--rate R" or "--salary S"
    const char* kiwiSaver;
};

// Each interval, the primary codes with and without student loan, a secondary code, hourly and
// salaried, enrolled and not.
const Kind kKinds[] = {
    {"weekly", "M", "--rate 31.50", "no"},          {"weekly", "ME", "--rate 24", "4"},
    {"fortnightly", "M SL", "--rate 42", "3"},      {"fortnightly", "S", "--rate 28.75", "no"},
    {"four-weekly", "SH", "--rate 55", "6"},        {"monthly", "M SL", "--salary 85000", "4"},
    {"monthly", "M", "--salary 52000", "no"},       {"weekly", "M SL", "--rate 38", "8"},
};

const char* const kFigures[] = {"Gross", "TotalTaxable", "PAYE", "NonTaxAllow", "Deductions", "TakeHome",
                                "KiwiSaverContribution", "ESCTDeductions"};

class FiguresAtCommit : public ::testing::Test {
protected:
    TempDocuments docs;
    CliResult run(const QStringList& a) {
        const CliResult r = runCli(a, docs.path());
        EXPECT_EQ(r.exitCode, 0) << a.join(u' ').toStdString() << "\n" << r.err.toStdString();
        return r;
    }
    qint32 employee(const Kind& k, int twin) {
        QStringList a{QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"),
                      QStringLiteral("Twin%1").arg(twin), QStringLiteral("--last"),
                      QStringLiteral("%1 %2").arg(QString::fromLatin1(k.interval), QString::fromLatin1(k.code)),
                      QStringLiteral("--start"), QStringLiteral("2026-10-01"), QStringLiteral("--tax-code"),
                      QString::fromLatin1(k.code), QStringLiteral("--interval"), QString::fromLatin1(k.interval),
                      QStringLiteral("--kiwisaver"), QString::fromLatin1(k.kiwiSaver), QStringLiteral("--ird"),
                      QStringLiteral("111-111-162")};
        a << QString::fromLatin1(k.pay).split(u' ');
        if (QString::fromLatin1(k.pay).startsWith(QLatin1String("--rate"))) a << QStringLiteral("--hours") << QStringLiteral("40");
        return parseJson(run(a).out).object().value(QStringLiteral("EmployeeID")).toInt();
    }
    QJsonObject stored(qint32 wageID) {
        const QJsonArray pays = parseJson(run({QStringLiteral("pays"), employeeOf(wageID)}).out).array();
        for (const QJsonValue& p : pays)
            if (p.toObject().value(QStringLiteral("WageID")).toInt() == wageID) return p.toObject();
        return {};
    }
    QString employeeOf(qint32 wageID) {
        ql::Database wage = openWage();
        return wage.scalar(QStringLiteral("SELECT EmployeeID FROM Wages WHERE WageID = %1").arg(wageID)).toString();
    }
};

TEST_F(FiguresAtCommit, AFirstPayLeavesWithTheFiguresARecalculationGivesInEveryWay) {
    ASSERT_EQ(run({QStringLiteral("init"), QStringLiteral("--demo")}).exitCode, 0);
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("N"));
    const QString date = QStringLiteral("2026-11-06");
    struct Twins {
        const Kind* kind;
        qint32 saved, committed, posted, inRun;
    };
    QList<Twins> all;
    for (const Kind& k : kKinds) {
        Twins t{&k, 0, 0, 0, 0};
        t.saved = addPayByCli(docs.path(), QString::number(employee(k, 1)), date);
        t.committed = addPayByCli(docs.path(), QString::number(employee(k, 2)), date);
        t.posted = addPayByCli(docs.path(), QString::number(employee(k, 3)), date);
        t.inRun = addPayByCli(docs.path(), QString::number(employee(k, 4)), date);
        all << t;
    }
    int withTax = 0;
    for (const Twins& t : all) {
        SCOPED_TRACE(QStringLiteral("%1 %2").arg(QString::fromLatin1(t.kind->interval), QString::fromLatin1(t.kind->code)).toStdString());
        // The twin whose line is saved again, with the units it has: the whole pay is recalculated.
        const QJsonObject pay = parseJson(run({QStringLiteral("pay"), QString::number(t.saved)}).out).object();
        const QJsonObject line = pay.value(QStringLiteral("PaymentDetails")).toArray().at(0).toObject();
        const QString units = QString::number(line.value(QStringLiteral("DetailHours")).toDouble());
        run({QStringLiteral("edit"), QString::number(t.saved), QStringLiteral("1"), QStringLiteral("0"),
             QStringLiteral("2"), units});
        run({QStringLiteral("commit"), QString::number(t.saved), QStringLiteral("--print"), QStringLiteral("off")});
        run({QStringLiteral("commit"), QString::number(t.committed), QStringLiteral("--print"), QStringLiteral("off")});
        run({QStringLiteral("post"), QString::number(t.posted), QStringLiteral("P%1").arg(t.posted), date,
             QStringLiteral("First pay")});
        run({QStringLiteral("commit"), QString::number(t.posted), QStringLiteral("--print"), QStringLiteral("off")});
    }
    // The run takes the remaining twins' pays as they stand and commits them.
    run({QStringLiteral("pay-run"), date, QStringLiteral("--commit")});

    for (const Twins& t : all) {
        SCOPED_TRACE(QStringLiteral("%1 %2").arg(QString::fromLatin1(t.kind->interval), QString::fromLatin1(t.kind->code)).toStdString());
        const QJsonObject reference = stored(t.saved);
        ASSERT_FALSE(reference.isEmpty());
        if (reference.value(QStringLiteral("PAYE")).toDouble() > 0) ++withTax;
        for (qint32 id : {t.committed, t.posted, t.inRun}) {
            const QJsonObject other = stored(id);
            EXPECT_FALSE(other.value(QStringLiteral("Reference")).toString().isEmpty()) << id;
            for (const char* f : kFigures)
                EXPECT_EQ(other.value(QString::fromLatin1(f)).toDouble(),
                          reference.value(QString::fromLatin1(f)).toDouble())
                    << f << " of pay " << id << " against pay " << t.saved;
        }
    }
    EXPECT_EQ(withTax, int(std::size(kKinds))) << "every kind's first pay has tax to pay";
    ql::Database wage = openWage();
    ql::Database farm = openFarm();
    EXPECT_EQ(disagreements(wage, farm), QString());
}

// A PAYE typed over the calculated one on purpose is committed as typed, and the commit dialog says so.
TEST_F(FiguresAtCommit, ATypedPayeIsCommittedAsTypedAndShownSo) {
    ASSERT_EQ(run({QStringLiteral("init"), QStringLiteral("--demo")}).exitCode, 0);
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("N"));
    const qint32 id = addPayByCli(docs.path(), QString::number(employee(kKinds[0], 1)), QStringLiteral("2026-11-06"));
    const QString w = QString::number(id);
    run({QStringLiteral("edit"), w, QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("2"), QStringLiteral("40")});
    const double calculated = stored(id).value(QStringLiteral("PAYE")).toDouble();
    ASSERT_GT(calculated, 100.0);
    run({QStringLiteral("set-paye"), w, QStringLiteral("100")});
    const QJsonObject dialog = parseJson(run({QStringLiteral("reference"), w}).out).object();
    EXPECT_EQ(dialog.value(QStringLiteral("typedPAYE")).toString(), QStringLiteral("$100.00"));
    run({QStringLiteral("commit"), w, QStringLiteral("--print"), QStringLiteral("off")});
    const QJsonObject pay = stored(id);
    EXPECT_EQ(pay.value(QStringLiteral("PAYE")).toDouble(), 100.0);
    EXPECT_NEAR(pay.value(QStringLiteral("TakeHome")).toDouble(),
                pay.value(QStringLiteral("TotalTaxable")).toDouble() - 100.0 +
                    pay.value(QStringLiteral("NonTaxAllow")).toDouble() -
                    pay.value(QStringLiteral("Deductions")).toDouble(),
                1e-9);

    // A calculated PAYE is not called typed.
    const qint32 other = addPayByCli(docs.path(), QString::number(employee(kKinds[1], 1)), QStringLiteral("2026-11-06"));
    const QJsonObject plain = parseJson(run({QStringLiteral("reference"), QString::number(other)}).out).object();
    EXPECT_FALSE(plain.contains(QStringLiteral("typedPAYE")));
}

} // namespace
