#include "OpenForms.h"
#include "runtime/Trap.h"
#include <QList>
#include <QPair>

namespace ql {

namespace {
QList<QPair<void*, std::function<void()>>>& openForms() {
    static QList<QPair<void*, std::function<void()>>> forms;
    return forms;
}
std::function<void()>& mainCloser() {
    static std::function<void()> closer;
    return closer;
}
std::function<void()>& mainUnload() {
    static std::function<void()> unload;
    return unload;
}
} // namespace

void setMainFormUnload(std::function<void()> unload) { mainUnload() = std::move(unload); }

void UnloadMainForm() {
    if (mainUnload())
        mainUnload()();
}

void registerOpenForm(void* key, std::function<void()> unload) { openForms().append({key, std::move(unload)}); }

void unregisterOpenForm(void* key) {
    openForms().removeIf([key](const auto& entry) { return entry.first == key; });
}

void UnloadOpenForms() {
    while (!openForms().isEmpty()) {
        const auto entry = openForms().takeFirst();
        skipErrors([&] { entry.second(); });
    }
}

void setMainFormCloser(std::function<void()> closer) { mainCloser() = std::move(closer); }

void UnloadAllForms() {
    if (mainCloser())
        skipErrors([] { mainCloser()(); });
    UnloadOpenForms();
}

} // namespace ql
