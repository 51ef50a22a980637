#pragma once
// The equations of the template modules database (TaxEquations rows for every country).
#include "Database.h"

namespace ql {

void addTemplateTaxEquations(Database& modules);

} // namespace ql
