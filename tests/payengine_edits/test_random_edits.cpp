// Random sequences of what a user may do to a pay: type anything into any cell of any view (empty,
// huge, negative, not a number, written with grouping marks or a currency sign), remove lines, type
// over the PAYE, move between views. After each step the pay is stored and must agree with its lines
// (EditInvariants), and nothing may fail or hang.
//
// QUILLARY_EDIT_SEQUENCES sets the number of sequences (a few hundred by default), QUILLARY_EDIT_SEED the
// seed; the seed is printed so that a failure can be replayed.
#include "../payengine_road/RoadFixture.h"
#include "EditInvariants.h"
#include "data/RoundCurrency.h"
#include "runtime/Trap.h"
#include <QDateTime>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <thread>

namespace qltest {
namespace {

constexpr int kDefaultSequences = 400;
constexpr int kDetailTabs[] = {1, 2, 4, 5, 7};

qint64 envNumber(const char* name, qint64 fallback) {
    const char* v = std::getenv(name);
    return v && *v ? std::strtoll(v, nullptr, 10) : fallback;
}

class Rng {
public:
    explicit Rng(quint64 seed) : m_g(seed) {}
    int below(int n) { return n <= 0 ? 0 : int(m_g() % quint64(n)); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T, size_t N> const T& pick(const T (&items)[N]) { return items[below(int(N))]; }

private:
    std::mt19937_64 m_g;
};

QString number(Rng& r) {
    switch (r.below(4)) {
    case 0:
        return QString::number(r.below(60));
    case 1:
        return QString::number(r.below(5000) / 100.0, 'f', 2);
    case 2:
        return QString::number(r.below(100000) / 1000.0, 'f', 3);
    default:
        return QString::number(r.below(2000));
    }
}

QString randomText(Rng& r) {
    static const char* const huge[] = {"1E+300",    "99999999999999",  "1e20",    "123456789012", "1000001",
                                       "999999.99", "922337203685477", "3.4E+38", "1E+15"};
    static const char* const odd[] = {"abc",  "5-",    "1..1", "(5",   "$",  ".",   ",1,000", "1 e1",
                                      "0x1F", "1.1.1", "--5",  "five", "1e", "NaN", "inf",    "\t"};
    static const char* const formatted[] = {"1,234.50", "$1,234",  "1,00,0", " 42 ", "$ 11",
                                            "&H1F",     "1E+03",   "5.",     ".5",   "$12.345",
                                            "12,5",     "1 234,5", "0.00",   "100",  "3.5"};
    switch (r.below(10)) {
    case 0:
        return QString();
    case 1:
        return QString::fromLatin1(r.pick(huge));
    case 2: {
        static const char* const forms[] = {"-%1", "(%1)", "-$%1", "$-%1", "%1-"};
        return QString::fromLatin1(r.pick(forms)).arg(number(r));
    }
    case 3:
        return QString::fromLatin1(r.pick(odd));
    case 4:
        return QString::fromLatin1(r.pick(formatted));
    default:
        return number(r);
    }
}

class RandomEdits : public RoadTest {
protected:
    Rng* rng = nullptr;
    std::atomic<qint64> progress{0};
    QStringList trace; // the steps of the sequence, told when it fails

    bool enrolled() const { return app.EmployeeArray.value(app.CurrentEmployee).KiwiSaverEnrolled; }

    void editCell(int tab) {
        screen->cmdSelect_Click(tab);
        ql::GridArray& grid = screen->WageGridArray;
        const int rows = grid.rowCount();
        const int columns = grid.columnCount();
        if (columns < 3) return;
        int row = rng->below(rows + 1);
        if (row == rows) {
            if (screen->tgrdwages_BeforeRowChange()) return;
            grid.insertRow(row);
            // Mostly a name first, as a user picks one from the list.
            if (rng->chance(80)) storeName(row);
        }
        const int column = 1 + rng->below(columns - 1);
        if (column == 1) {
            storeName(row);
            return;
        }
        if (screen->tgrdwages_BeforeColEdit(column)) return;
        const QString text = randomText(*rng);
        trace << QStringLiteral("tab %1 row %2 of %3 column %4: \"%5\"")
                     .arg(tab)
                     .arg(row)
                     .arg(rows)
                     .arg(column)
                     .arg(text);
        screen->storeCell(row, column, text);
    }
    void storeName(int row) {
        const ql::GridColumn& names = screen->WageGridArray.column(1);
        QString text;
        if (!names.valueItems.isEmpty() && rng->chance(85))
            text = ql::CStr(names.valueItems.at(rng->below(int(names.valueItems.size()))).value);
        else
            text = randomText(*rng);
        trace << QStringLiteral("tab %1 row %2 name \"%3\"").arg(ql::App().CurrentTab).arg(row).arg(text);
        if (!screen->tgrdwages_BeforeColEdit(1)) screen->storeCell(row, 1, text);
    }
    void deleteLine(int tab) {
        screen->cmdSelect_Click(tab);
        ql::GridArray& grid = screen->WageGridArray;
        if (grid.rowCount() == 0 || screen->tgrdwages_BeforeRowChange()) return;
        const int row = rng->below(grid.rowCount());
        trace << QStringLiteral("tab %1 delete row %2").arg(tab).arg(row);
        grid.deleteRow(row);
        screen->tgrdwages_AfterRowChange();
    }
    void typePaye() {
        screen->cmdSelect_Click(3);
        screen->txtPAYE_GotFocus();
        const QString text = randomText(*rng);
        trace << QStringLiteral("PAYE \"%1\"").arg(text);
        screen->setCaption(QStringLiteral("txtPAYE"), text);
        const QString before = screen->PAYEText;
        bool asks = false;
        ql::skipErrors([&] {
            asks = ql::IsNumeric(before) && ql::IsNumeric(text) &&
                   ql::RoundCurrency(before) != ql::RoundCurrency(text);
        });
        if (asks) dialogs.queueAnswer(rng->chance(70) ? 6 : 7);
        if (rng->chance(50))
            screen->txtPAYE_Accept();
        else
            screen->txtPAYE_LostFocus();
    }

    // One step, then the pay is stored as leaving the view stores it.
    void step() {
        const int kind = rng->below(10);
        const int tab = rng->pick(kDetailTabs);
        if (kind < 6)
            editCell(tab);
        else if (kind < 8)
            deleteLine(tab);
        else if (kind < 9)
            typePaye();
        else {
            const int view = 1 + rng->below(7);
            trace << QStringLiteral("view %1").arg(view);
            screen->cmdSelect_Click(view);
        }
        if (screen->frontControl == QStringLiteral("tgrdwages")) screen->tgrdwages_LostFocus();
        screen->datPays.UpdateRecord();
    }
};

TEST_F(RandomEdits, EveryStepLeavesAConsistentPay) {
    const quint64 seed = quint64(envNumber("QUILLARY_EDIT_SEED", QDateTime::currentMSecsSinceEpoch()));
    const qint64 sequences = envNumber("QUILLARY_EDIT_SEQUENCES", kDefaultSequences);
    std::cout << "random edits: seed " << seed << ", " << sequences << " sequences" << std::endl;
    Rng r(seed);
    rng = &r;

    // A step that takes a minute is a hang: say where, and stop.
    std::atomic<bool> done{false};
    std::atomic<qint64> sequenceNow{0};
    std::thread watchdog([&] {
        qint64 seen = -1;
        auto since = std::chrono::steady_clock::now();
        while (!done) {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            if (progress != seen) {
                seen = progress;
                since = std::chrono::steady_clock::now();
            } else if (std::chrono::steady_clock::now() - since > std::chrono::seconds(60)) {
                std::cerr << "random edits: no progress for a minute in sequence " << sequenceNow << " (seed "
                          << seed << ")" << std::endl;
                std::abort();
            }
        }
    });

    struct Stop {
        std::atomic<bool>& done;
        std::thread& thread;
        ~Stop() {
            done = true;
            thread.join();
        }
    } stop{done, watchdog};

    const DemoEmployee employees[] = {FarmHand, Manager, ReliefMilker, TractorDriver, PartTimer};
    qint64 steps = 0, refused = 0;
    for (qint64 s = 0; s < sequences && !HasFailure(); ++s) {
        sequenceNow = s;
        const DemoEmployee who = r.pick(employees);
        pick(who, QDate(2026, 4, 6));
        if (screen->datPays.RecordCount() == 0 || r.chance(40) || screen->datPays.EOF_()) addPay();
        const qint32 wage = app.CurrentWageID;
        trace = QStringList{QStringLiteral("employee %1, pay %2").arg(int(who)).arg(wage)};
        const int length = 1 + r.below(6);
        for (int i = 0; i < length; ++i) {
            const int before = int(dialogs.calls.size());
            try {
                step();
            } catch (const std::exception& e) {
                FAIL() << "seed " << seed << ", sequence " << s << ", step " << i << ": " << e.what()
                       << "\nsteps:\n"
                       << trace.join('\n').toStdString();
            }
            ++steps;
            ++progress;
            for (int c = before; c < dialogs.calls.size(); ++c)
                if (dialogs.calls.at(c).heading == QStringLiteral("Invalid Entry")) ++refused;
            const QStringList broken = edittest::payInconsistencies(db(), *screen, wage, enrolled());
            ASSERT_TRUE(broken.isEmpty()) << "seed " << seed << ", sequence " << s << ", step " << i << ":\n"
                                          << broken.join('\n').toStdString() << "\nsteps:\n"
                                          << trace.join('\n').toStdString();
            ASSERT_TRUE(errorsReported().isEmpty())
                << "seed " << seed << ", sequence " << s << ", step " << i << ":\n"
                << errorsReported().join('\n').toStdString();
        }
        // The dialogs of the sequence are checked; keep the record short.
        dialogs.calls.clear();
    }
    std::cout << "random edits: " << steps << " steps, " << refused << " entries refused" << std::endl;
}

} // namespace
} // namespace qltest
