#pragma once
// Every key that has a getter, with the getter's value as text: what the program would use.
#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace ql {

struct SettingEntry {
    QString section;
    QString key;
    QString defaultText; // the default, in words
    std::function<QString()> valueText;
};

const QList<SettingEntry>& settingsCatalog();

// The getter's value for section and key (both without regard to case), as text: booleans
// "True"/"False", numbers plain, PAYEStart in its text form, colours "r,g,b"; nullopt when the
// key has no getter.
std::optional<QString> settingValueText(const QString& section, const QString& key);

} // namespace ql
