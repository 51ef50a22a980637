#include "ProfileFile.h"
#include "Settings.h"
#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <optional>

namespace ql {
namespace {

QByteArrayList fileLines(const QByteArray& data) {
    QByteArrayList lines = data.split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast(); // the final line break ends a line, it starts none
    for (QByteArray& l : lines)
        if (l.endsWith('\r')) l.chop(1);
    if (!lines.isEmpty() && lines.first().startsWith("\xEF\xBB\xBF")) lines.first().remove(0, 3);
    return lines;
}

QString decoded(const QByteArray& line) {
    return QString::fromUtf8(line).trimmed();
}

// The name of a section line, or nullopt when the line is no section line.
std::optional<QString> sectionName(const QByteArray& line) {
    const QString t = decoded(line);
    if (!t.startsWith(QLatin1Char('['))) return std::nullopt;
    const qsizetype close = t.indexOf(QLatin1Char(']'));
    return t.mid(1, close < 0 ? -1 : close - 1).trimmed();
}

// The key of a key line, or nullopt when the line holds no "=".
std::optional<QString> keyName(const QByteArray& line) {
    const qsizetype eq = line.indexOf('=');
    if (eq < 0) return std::nullopt;
    return decoded(line.left(eq));
}

bool sameName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::function<QLocale::Territory()>& territorySource() {
    static std::function<QLocale::Territory()> s;
    return s;
}

} // namespace

bool isWinIni(const QString& file) {
    return sameName(file, QStringLiteral("WIN.INI"));
}

QString profilePath(const QString& file) {
    if (file.contains(QLatin1Char('/'))) return file;
    return CommonFolder() + QLatin1Char('/') + file;
}

QString profileString(const QString& file, const QString& section, const QString& key) {
    if (isWinIni(file)) {
        if (!sameName(section, QStringLiteral("INTL")) || !sameName(key, QStringLiteral("iCountry")))
            return QString();
        const int code = territoryPhoneCode(systemTerritory());
        return code > 0 ? QString::number(code) : QString();
    }
    QFile f(profilePath(file));
    if (!f.open(QIODevice::ReadOnly)) return QString();
    const QByteArrayList lines = fileLines(f.readAll());
    bool inSection = false;
    bool sectionSeen = false;
    for (const QByteArray& line : lines) {
        if (auto name = sectionName(line)) {
            if (sectionSeen) break; // only the first section of that name counts
            inSection = sameName(*name, section);
            sectionSeen = inSection;
            continue;
        }
        if (!inSection) continue;
        auto k = keyName(line);
        if (k && sameName(*k, key)) {
            const QString value = decoded(line.mid(line.indexOf('=') + 1));
            return value.left(ProfileValueLimit);
        }
    }
    return QString();
}

void writeProfileString(const QString& file, const QString& section, const QString& key,
                        const QString& value) {
    if (isWinIni(file)) return;
    const QString path = profilePath(file);
    QFileInfo info(path);
    QByteArray data;
    if (info.exists()) {
        // A file marked read-only stays untouched even for a user the system would let write it.
        if (!(info.permissions() &
              (QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther)))
            return;
        QFile in(path);
        if (!in.open(QIODevice::ReadOnly)) return;
        data = in.readAll();
    } else {
        QDir().mkpath(info.absolutePath());
    }
    const QByteArray eol = data.contains("\r\n") ? QByteArray("\r\n") : QByteArray("\n");
    QByteArrayList lines = fileLines(data);
    const QByteArray keyLine = key.toUtf8() + '=' + value.toUtf8();

    qsizetype sectionAt = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        auto name = sectionName(lines[i]);
        if (name && sameName(*name, section)) {
            sectionAt = i;
            break;
        }
    }
    if (sectionAt < 0) {
        if (!lines.isEmpty() && !lines.last().trimmed().isEmpty()) lines.append(QByteArray());
        lines.append('[' + section.toUtf8() + ']');
        lines.append(keyLine);
    } else {
        qsizetype lastContent = sectionAt;
        qsizetype found = -1;
        for (qsizetype i = sectionAt + 1; i < lines.size(); ++i) {
            if (sectionName(lines[i])) break;
            if (!lines[i].trimmed().isEmpty()) lastContent = i;
            auto k = keyName(lines[i]);
            if (k && sameName(*k, key)) {
                found = i;
                break;
            }
        }
        if (found >= 0)
            lines[found] = keyLine;
        else
            lines.insert(lastContent + 1, keyLine);
    }
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    out.write(lines.join(eol) + eol);
}

void setTerritorySource(std::function<QLocale::Territory()> source) {
    territorySource() = std::move(source);
}

QLocale::Territory systemTerritory() {
    if (territorySource()) return territorySource()();
    return QLocale::system().territory();
}

int territoryPhoneCode(QLocale::Territory t) {
    using T = QLocale;
    struct Code {
        QLocale::Territory territory;
        int code;
    };
    static const Code codes[] = {
        {T::NewZealand, 64},    {T::Australia, 61},   {T::Brazil, 55},          {T::Uruguay, 598},
        {T::UnitedKingdom, 44}, {T::UnitedStates, 1}, {T::Canada, 1},           {T::Germany, 49},
        {T::France, 33},        {T::Italy, 39},       {T::Spain, 34},           {T::Portugal, 351},
        {T::Netherlands, 31},   {T::Belgium, 32},     {T::Switzerland, 41},     {T::Austria, 43},
        {T::Ireland, 353},      {T::Denmark, 45},     {T::Sweden, 46},          {T::Norway, 47},
        {T::Finland, 358},      {T::Iceland, 354},    {T::Poland, 48},          {T::CzechRepublic, 420},
        {T::Hungary, 36},       {T::Greece, 30},      {T::Russia, 7},           {T::Ukraine, 380},
        {T::Japan, 81},         {T::China, 86},       {T::HongKong, 852},       {T::Taiwan, 886},
        {T::SouthKorea, 82},    {T::India, 91},       {T::Pakistan, 92},        {T::Bangladesh, 880},
        {T::SriLanka, 94},      {T::Singapore, 65},   {T::Malaysia, 60},        {T::Indonesia, 62},
        {T::Philippines, 63},   {T::Thailand, 66},    {T::Vietnam, 84},         {T::Fiji, 679},
        {T::Samoa, 685},        {T::Tonga, 676},      {T::PapuaNewGuinea, 675}, {T::CookIslands, 682},
        {T::Argentina, 54},     {T::Chile, 56},       {T::Paraguay, 595},       {T::Bolivia, 591},
        {T::Peru, 51},          {T::Colombia, 57},    {T::Ecuador, 593},        {T::Venezuela, 58},
        {T::Mexico, 52},        {T::SouthAfrica, 27}, {T::Kenya, 254},          {T::Nigeria, 234},
        {T::Egypt, 20},         {T::Israel, 972},     {T::SaudiArabia, 966},    {T::UnitedArabEmirates, 971},
        {T::Zimbabwe, 263},     {T::Namibia, 264},    {T::Botswana, 267},       {T::Luxembourg, 352},
        {T::Turkey, 90},
    };
    for (const Code& c : codes)
        if (c.territory == t) return c.code;
    return 0;
}

} // namespace ql
