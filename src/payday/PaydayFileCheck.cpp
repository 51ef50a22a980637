#include "PaydayFileCheck.h"
#include "BankAccount.h"
#include "PaydayText.h"
#include "RecordCheck.h"
#include <QSet>
#include <array>

namespace ql {

namespace {

const QString kAnamWords = QStringLiteral("keyboard characters other than commas, quotes, brackets and backslashes");
const QString kAnumWords = QStringLiteral("letters, digits, blanks and dashes");
const QString kAlphaWords = QStringLiteral("letters and blanks");
const QString kEmailWords = QStringLiteral("letters, digits and @ - _ .");

void anam(RecordCheck& c, int position, const QString& name, int size, bool required) {
    c.text(position, name, size, required, IsKeyboardCharacter, kAnamWords);
}

void email(RecordCheck& c, int position, const QString& name, int size, bool required) {
    c.text(position, name, size, required, IsEmailCharacter, kEmailWords);
    const QString& v = c.value(position);
    if (v.isEmpty()) return;
    const qsizetype at = v.indexOf(u'@');
    if (at <= 0 || v.count(u'@') != 1 || !v.mid(at + 1).contains(u'.') || v.endsWith(u'.') ||
        v.mid(at + 1).startsWith(u'.'))
        c.problem(QStringLiteral("%1 \"%2\" has no name@domain form.").arg(name, v));
    if (v.contains(QStringLiteral(".."))) c.problem(QStringLiteral("%1 \"%2\" holds a double period.").arg(name, v));
}

void digitsText(RecordCheck& c, int position, const QString& name, int size) {
    c.text(position, name, size, false, IsDigit, QStringLiteral("digits"));
}

const QStringList& countries() {
    static const QStringList list = QStringLiteral(
        "ABW AFG AGO AIA ALA ALB AND ARE ARG ARM ASM ATA ATF ATG AUS AUT AZE BDI BEL BEN BES BFA BGD BGR "
        "BHR BHS BIH BLM BLR BLZ BMU BOL BRA BRB BRN BTN BVT BWA CAF CAN CCK CHE CHL CHN CIV CMR COD COG "
        "COK COL COM CPV CRI CUB CUW CXR CYM CYP CZE DEU DJI DMA DNK DOM DZA ECU EGY ERI ESH ESP EST ETH "
        "FIN FJI FLK FRA FRO FSM GAB GBR GEO GGY GHA GIB GIN GLP GMB GNB GNQ GRC GRD GRL GTM GUF GUM GUY "
        "HKG HMD HND HRV HTI HUN IDN IMN IND IOT IRL IRN IRQ ISL ISR ITA JAM JEY JOR JPN KAZ KEN KGZ KHM "
        "KIR KNA KOR KWT LAO LBN LBR LBY LCA LIE LKA LSO LTU LUX LVA MAC MAF MAR MCO MDA MDG MDV MEX MHL "
        "MKD MLI MLT MMR MNE MNG MNP MOZ MRT MSR MTQ MUS MWI MYS MYT NAM NCL NER NFK NGA NIC NIU NLD NOR "
        "NPL NRU NZL OMN PAK PAN PCN PER PHL PLW PNG POL PRI PRK PRT PRY PSE PYF QAT REU ROU RUS RWA SAU "
        "SDN SEN SGP SGS SHN SJM SLB SLE SLV SMR SOM SPM SRB SSD STP SUR SVK SVN SWE SWZ SXM SYC SYR TCA "
        "TCD TGO THA TJK TKL TKM TLS TON TTO TUN TUR TUV TWN TZA UGA UKR UMI URY USA UZB VAT VCT VEN VGB "
        "VIR VNM VUT WLF WSM XKX YEM ZAF ZMB ZWE").split(u' ');
    return list;
}

void country(RecordCheck& c, int position, const QString& name) {
    const QString& v = c.value(position);
    if (!v.isEmpty() && !countries().contains(v))
        c.problem(QStringLiteral("%1 \"%2\" is not an ISO 3166 alpha-3 country code of the list.").arg(name, v));
}

const QStringList& titles() {
    static const QStringList list{
        "Brigadier", "Captain", "Colonel", "Dame", "Doctor", "Honourable", "Honourable Doctor", "Judge",
        "Lady", "Lord", "Major", "Master", "Miss", "Mr", "Mrs", "Ms", "Mx", "Professor", "Reverend",
        "Reverend Father", "Reverend Mother", "Right Honourable", "Right Reverend", "Sir", "Sister",
        "Wing Commander"};
    return list;
}

QStringList compactTaxCodes() {
    QStringList codes;
    for (const QString& code : IrTaxCodes()) {
        codes << code;
        if (code.contains(u' ')) codes << QString(code).remove(u' ');
    }
    return codes;
}

QString nameOf(const CsvRecord& r, int position) {
    const QString n = r.field(position).trimmed();
    return n.isEmpty() ? QStringLiteral("no name") : n;
}

// The HEI2 header total at each position and the DEI field it sums.
struct TotalOf {
    int header;
    int line;
    const char* name;
};
const std::array<TotalOf, 15> kTotals{{
    {11, 11, "Total gross earnings"},
    {12, 12, "Total prior period gross adjustments"},
    {13, 13, "Total earnings not liable for ACC earners' levy"},
    {14, 15, "Total PAYE"},
    {15, 16, "Total prior period PAYE adjustment"},
    {16, 17, "Total child support deductions"},
    {17, 19, "Total student loan deductions"},
    {18, 20, "Total SLCIR deductions"},
    {19, 21, "Total SLBOR deductions"},
    {20, 22, "Total KiwiSaver deductions"},
    {21, 23, "Total net KiwiSaver employer contributions"},
    {22, 24, "Total ESCT deducted"},
    {24, 25, "Total tax credits for payroll donations"},
    {25, 26, "Total family tax credits"},
    {26, 27, "Total Employee Share Scheme"},
}};

// Signed amounts of the DEI line (the prior period adjustments); all others are non-negative.
bool signedLineAmount(int position) {
    return position == 12 || position == 16;
}

void checkDei(const CsvRecord& r, QStringList& problems, QList<qint64>& sums) {
    RecordCheck c(r, nameOf(r, 3), problems);
    if (!c.fieldCount(27)) return;
    c.irdNumber(2, QStringLiteral("Employee IRD number"), true);
    anam(c, 3, QStringLiteral("Employee name"), 255, true);
    c.oneOf(4, QStringLiteral("Tax code"), compactTaxCodes(), true);
    // Start and finish dates are reported with the period they fall in; Inland Revenue's own casebook file
    // also carries them on other periods' lines, so a date outside the period is not held against a file.
    c.date(5, QStringLiteral("Employment start date"), false);
    c.date(6, QStringLiteral("Employment finish date"), false);
    const QDate from = c.date(7, QStringLiteral("Pay period start date"), true);
    const QDate to = c.date(8, QStringLiteral("Pay period end date"), true);
    if (from.isValid() && to.isValid() && from > to)
        c.problem(QStringLiteral("the pay period starts after it ends."));
    c.oneOf(9, QStringLiteral("Pay cycle"), IrPayCycles(), true);
    c.number(10, QStringLiteral("Hours paid"), 8, true);
    QList<std::optional<qint64>> a(28);
    for (int p = 11; p <= 27; ++p) {
        if (p == 14 || p == 18) continue;
        a[p] = c.number(p, QStringLiteral("Amount in field %1").arg(p), 14, true, signedLineAmount(p));
    }
    c.oneOf(14, QStringLiteral("Lump sum indicator"), {QStringLiteral("0"), QStringLiteral("1")}, true);
    c.oneOf(18, QStringLiteral("Child support code"),
            {QStringLiteral("C"), QStringLiteral("A"), QStringLiteral("P"), QStringLiteral("S"),
             QStringLiteral("D"), QStringLiteral("O")},
            false);
    const qint64 gross = a[11].value_or(0), ess = a[27].value_or(0);
    if (a[15] && *a[15] > gross + ess) c.problem(QStringLiteral("PAYE is more than gross earnings and share scheme."));
    if (a[17] && *a[17] > gross) c.problem(QStringLiteral("child support is more than gross earnings."));
    if (a[19] && *a[19] > gross) c.problem(QStringLiteral("student loan is more than gross earnings."));
    if (a[13] && *a[13] > gross + ess)
        c.problem(QStringLiteral("earnings not liable for ACC earners' levy are more than gross earnings and share scheme."));
    if (a[12] && gross + *a[12] < 0) c.problem(QStringLiteral("the prior period gross adjustment takes gross below zero."));
    if (a[16] && a[15].value_or(0) + *a[16] < 0)
        c.problem(QStringLiteral("the prior period PAYE adjustment takes PAYE below zero."));
    for (const TotalOf& t : kTotals)
        sums[t.header] += a[t.line].value_or(0);
}

} // namespace

const QStringList& IrTaxCodes() {
    static const QStringList codes{"M",  "ME",   "M SL",  "ME SL", "NSW",  "SB",    "S",   "SH",  "ST",  "SA",
                                   "SB SL", "S SL", "SH SL", "ST SL", "SA SL", "CAE", "EDW", "ND", "STC", "WT"};
    return codes;
}

const QStringList& IrPayCycles() {
    static const QStringList codes{"WK", "FT", "4W", "MT", "DA", "AH", "HM"};
    return codes;
}

QStringList CheckEmploymentInformationFile(const QString& text) {
    QStringList problems;
    const QList<CsvRecord> records = SplitCsvRecords(text, true, problems);
    if (records.isEmpty()) return problems;
    const CsvRecord& h = records.first();
    if (h.field(1) != QStringLiteral("HEI2")) {
        problems << QStringLiteral("Line %1: the file does not start with a HEI2 header.").arg(h.line);
        return problems;
    }
    QList<qint64> sums(27, 0);
    int lines = 0;
    for (int i = 1; i < records.size(); ++i) {
        const CsvRecord& r = records.at(i);
        if (r.field(1) != QStringLiteral("DEI")) {
            problems << QStringLiteral("Line %1: \"%2\" is not an employee line (DEI).").arg(r.line).arg(r.field(1));
            continue;
        }
        ++lines;
        checkDei(r, problems, sums);
    }
    RecordCheck c(h, QStringLiteral("header"), problems);
    if (!c.fieldCount(28)) return problems;
    c.irdNumber(2, QStringLiteral("Employer IRD number"), false);
    c.date(3, QStringLiteral("Paydate"), true);
    c.oneOf(4, QStringLiteral("Final return indicator"), {QStringLiteral("Y"), QStringLiteral("N")}, true);
    c.oneOf(5, QStringLiteral("Nil return indicator"), {QStringLiteral("Y"), QStringLiteral("N")}, true);
    c.irdNumber(6, QStringLiteral("PAYE intermediary IRD number"), false, false);
    anam(c, 7, QStringLiteral("Payroll contact name"), 20, true);
    c.text(8, QStringLiteral("Payroll contact phone"), 12, true, IsLetterDigitBlankOrDash, kAnumWords);
    email(c, 9, QStringLiteral("Payroll contact email"), 60, true);
    const auto count = c.number(10, QStringLiteral("Total employee lines"), 14, true);
    if (count && *count != lines)
        c.problem(QStringLiteral("Total employee lines is %1, but the file has %2.")
                      .arg(*count)
                      .arg(Counted(lines, QStringLiteral("employee line"), QStringLiteral("employee lines"))));
    if (c.value(5) == QStringLiteral("Y") && lines > 0)
        c.problem(QStringLiteral("a nil return has no employee lines."));
    QList<std::optional<qint64>> h26(27);
    for (int p = 11; p <= 26; ++p)
        h26[p] = c.number(p, QStringLiteral("Header amount in field %1").arg(p), 14, true, p == 12 || p == 15);
    for (const TotalOf& t : kTotals)
        if (h26[t.header] && *h26[t.header] != sums[t.header])
            c.problem(QStringLiteral("%1 is %2, but the employee lines add up to %3.")
                          .arg(QString::fromLatin1(t.name))
                          .arg(*h26[t.header])
                          .arg(sums[t.header]));
    // As Inland Revenue's casebook adds them: the prior period PAYE adjustment counts with the PAYE.
    qint64 deducted = -h26[24].value_or(0);
    for (int p : {14, 15, 16, 17, 18, 19, 20, 21, 22})
        deducted += h26[p].value_or(0);
    if (h26[23] && *h26[23] != deducted)
        c.problem(QStringLiteral("Total amounts deducted is %1, but PAYE with its prior period adjustment, child "
                                 "support, student loan, SLCIR, SLBOR, KiwiSaver, employer contributions and ESCT "
                                 "less payroll donation credits make %2.")
                      .arg(*h26[23])
                      .arg(deducted));
    if (h26[14] && h26[11] && *h26[14] > *h26[11] + h26[26].value_or(0))
        c.problem(QStringLiteral("Total PAYE is more than total gross earnings."));
    anam(c, 27, QStringLiteral("Payroll package and version"), 80, true);
    c.equals(28, QStringLiteral("Form version"), QStringLiteral("0001"));
    return problems;
}

namespace {

void checkDed(const CsvRecord& r, QStringList& problems) {
    RecordCheck c(r, nameOf(r, 3), problems);
    if (!c.fieldCount(41)) return;
    c.irdNumber(2, QStringLiteral("Employee IRD number"), true);
    anam(c, 3, QStringLiteral("Employee name"), 255, true);
    c.oneOf(4, QStringLiteral("Title"), titles(), false);
    anam(c, 5, QStringLiteral("First name"), 50, true);
    anam(c, 6, QStringLiteral("Middle name"), 50, false);
    anam(c, 7, QStringLiteral("Last name"), 50, true);
    c.date(8, QStringLiteral("Date of birth"), false);
    const QDate started = c.date(9, QStringLiteral("Employment start date"), true);
    const QDate ended = c.date(10, QStringLiteral("Employment end date"), false);
    if (started.isValid() && ended.isValid() && ended <= started)
        c.problem(QStringLiteral("the employment end date is not after the start date."));
    c.oneOf(11, QStringLiteral("KiwiSaver eligibility"),
            {QStringLiteral("NE"), QStringLiteral("EE"), QStringLiteral("EA")}, false);
    c.oneOf(12, QStringLiteral("New employee KiwiSaver status"),
            {QStringLiteral("AE"), QStringLiteral("AK"), QStringLiteral("OK"), QStringLiteral("NK"),
             QStringLiteral("CT")},
            false);
    if (c.value(11) == QStringLiteral("NE") && c.blank(12))
        c.problem(QStringLiteral("a new employee (NE) needs a KiwiSaver status (AE, AK, OK, NK or CT)."));
    c.oneOf(13, QStringLiteral("Exempt income"),
            {QStringLiteral("BLH"), QStringLiteral("TAO"), QStringLiteral("VBS"), QStringLiteral("RTA"),
             QStringLiteral("OES"), QStringLiteral("HPT")},
            false);
    email(c, 14, QStringLiteral("Email address"), 510, false);
    country(c, 15, QStringLiteral("Mobile phone country"));
    digitsText(c, 16, QStringLiteral("Mobile phone number"), 30);
    digitsText(c, 17, QStringLiteral("Mobile extension"), 20);
    country(c, 18, QStringLiteral("Daytime phone country"));
    digitsText(c, 19, QStringLiteral("Daytime phone number"), 30);
    digitsText(c, 20, QStringLiteral("Daytime phone extension"), 20);
    country(c, 21, QStringLiteral("Country"));
    const std::array<std::pair<int, int>, 10> address{
        {{22, 50}, {23, 10}, {24, 30}, {25, 30}, {26, 50}, {27, 510}, {28, 60}, {29, 100}, {30, 30}, {31, 12}}};
    bool anyAddress = false;
    for (const auto& [position, size] : address) {
        anam(c, position, QStringLiteral("Address field %1").arg(position), size, false);
        anyAddress = anyAddress || !c.blank(position);
    }
    if (anyAddress && c.blank(21)) c.problem(QStringLiteral("an address needs its country code."));
    if (c.value(21) == QStringLiteral("NZL") && !c.blank(31))
        c.problem(QStringLiteral("a New Zealand address leaves the state blank."));
    if (c.blank(14) && c.blank(16) && c.blank(19) && c.blank(27) && c.blank(29))
        c.problem(QStringLiteral("without an email or phone a postal address is needed."));
    c.oneOf(32, QStringLiteral("Opted out of KiwiSaver"), {QStringLiteral("Y"), QStringLiteral("N")}, false);
    const bool optedOut = c.value(32) == QStringLiteral("Y");
    if (optedOut && c.value(11) == QStringLiteral("EE"))
        c.problem(QStringLiteral("an existing employee opting in (EE) cannot have opted out."));
    if (optedOut && QStringList{"AK", "NK", "CT", "OK"}.contains(c.value(12)))
        c.problem(QStringLiteral("KiwiSaver status %1 cannot have opted out.").arg(c.value(12)));
    const std::array<std::pair<int, int>, 4> bank{{{33, 2}, {34, 4}, {35, 8}, {36, 4}}};
    for (const auto& [position, size] : bank) {
        if (optedOut) c.number(position, QStringLiteral("Opt-out bank account part %1").arg(position - 32), size, true);
        else c.empty(position, QStringLiteral("Opt-out bank account part %1").arg(position - 32),
                     QStringLiteral("unless the employee opted out"));
    }
    if (optedOut && !c.blank(33) && !c.blank(34) && !c.blank(35) && !c.blank(36)) {
        const QString account = QStringLiteral("%1-%2-%3-%4").arg(c.value(33), c.value(34), c.value(35), c.value(36));
        const QString problem = BankAccountProblem(account);
        if (!problem.isEmpty()) c.problem(QStringLiteral("opt-out bank account %1: %2").arg(account, problem));
    }
    digitsText(c, 37, QStringLiteral("Bank account reference"), 12);
    QDate signedOn;
    if (optedOut) {
        anam(c, 38, QStringLiteral("Name of account holder"), 31, true);
        signedOn = c.date(39, QStringLiteral("Date opt-out notice signed"), true);
    } else {
        c.empty(38, QStringLiteral("Name of account holder"), QStringLiteral("unless the employee opted out"));
        c.empty(39, QStringLiteral("Date opt-out notice signed"), QStringLiteral("unless the employee opted out"));
    }
    c.oneOf(40, QStringLiteral("Late opt-out reason"),
            {QStringLiteral("INFO"), QStringLiteral("IRIS"), QStringLiteral("ERIS"), QStringLiteral("EVNT"),
             QStringLiteral("CRIT"), QStringLiteral("INER"), QStringLiteral("OTHR")},
            false);
    if (optedOut && signedOn.isValid() && started.isValid() && started.daysTo(signedOn) > 56 && c.blank(40))
        c.problem(QStringLiteral("an opt-out signed more than 56 days after the start needs a late opt-out reason."));
    if (c.value(40) == QStringLiteral("OTHR"))
        anam(c, 41, QStringLiteral("Other late opt-out reason"), 500, true);
    else
        c.empty(41, QStringLiteral("Other late opt-out reason"), QStringLiteral("unless the reason is OTHR"));
}

void checkTeds(const CsvRecord& ded, const QList<const CsvRecord*>& teds, QStringList& problems) {
    const QString who = nameOf(ded, 3);
    if (teds.isEmpty()) {
        RecordCheck(ded, who, problems).problem(QStringLiteral("has no TED line with its tax code after it."));
        return;
    }
    static const QStringList primary{"M", "ME", "M SL", "ME SL"};
    QSet<QString> seen;
    int primaries = 0;
    for (const CsvRecord* t : teds) {
        RecordCheck c(*t, who, problems);
        if (!c.fieldCount(2)) continue;
        c.oneOf(2, QStringLiteral("Tax code"), IrTaxCodes(), true);
        if (seen.contains(c.value(2))) c.problem(QStringLiteral("tax code %1 is given twice.").arg(c.value(2)));
        seen.insert(c.value(2));
        if (primary.contains(c.value(2))) ++primaries;
    }
    if (primaries > 1)
        RecordCheck(ded, who, problems).problem(QStringLiteral("has more than one primary tax code (M, ME, M SL, ME SL)."));
    if (seen.contains(QStringLiteral("NSW")) && seen.size() > 1)
        RecordCheck(ded, who, problems).problem(QStringLiteral("has tax code NSW beside other tax codes."));
}

} // namespace

QStringList CheckEmployeeDetailsFile(const QString& text) {
    QStringList problems;
    const QList<CsvRecord> records = SplitCsvRecords(text, true, problems);
    if (records.isEmpty()) return problems;
    const CsvRecord& h = records.first();
    if (h.field(1) != QStringLiteral("HED2")) {
        problems << QStringLiteral("Line %1: the file does not start with a HED2 header.").arg(h.line);
        return problems;
    }
    int employees = 0;
    const CsvRecord* ded = nullptr;
    QList<const CsvRecord*> teds;
    for (int i = 1; i < records.size(); ++i) {
        const CsvRecord& r = records.at(i);
        if (r.field(1) == QStringLiteral("DED")) {
            if (ded) checkTeds(*ded, teds, problems);
            ded = &r;
            teds.clear();
            ++employees;
            checkDed(r, problems);
        } else if (r.field(1) == QStringLiteral("TED")) {
            if (ded) teds << &r;
            else problems << QStringLiteral("Line %1: a TED line comes before any DED line.").arg(r.line);
        } else {
            problems << QStringLiteral("Line %1: \"%2\" is neither a DED nor a TED line.").arg(r.line).arg(r.field(1));
        }
    }
    if (ded) checkTeds(*ded, teds, problems);
    RecordCheck c(h, QStringLiteral("header"), problems);
    if (!c.fieldCount(4)) return problems;
    c.irdNumber(2, QStringLiteral("Employer IRD number"), false);
    anam(c, 3, QStringLiteral("Payroll package and version"), 80, true);
    const auto count = c.number(4, QStringLiteral("Total employee lines"), 14, true);
    if (count && *count != employees)
        c.problem(QStringLiteral("Total employee lines is %1, but the file has %2.")
                      .arg(*count)
                      .arg(Counted(employees, QStringLiteral("DED line"), QStringLiteral("DED lines"))));
    return problems;
}

} // namespace ql
