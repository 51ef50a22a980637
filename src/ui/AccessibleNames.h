#pragma once
// Names for screen readers where Qt gives none: the parts of a calendar (its month arrows, month
// button and year box), and a value label named by its caption and its amount ("Gross 1,022.75").
#include <QString>

class QCalendarWidget;
class QLabel;

namespace ql {

void NameCalendarParts(QCalendarWidget* calendar);
// "caption amount", or the caption alone while the label shows nothing.
void NameValueLabel(QLabel* label, const QString& caption);

} // namespace ql
