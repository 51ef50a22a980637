#pragma once
// The forms other than the main screen that are open now, so that a close of everything (the close
// button, the suite's Finish) can unload them in the order they were opened.
#include <functional>

namespace ql {

void registerOpenForm(void* key, std::function<void()> unload);
void unregisterOpenForm(void* key);
// Unloads every registered form, oldest first; a failing unload is skipped.
void UnloadOpenForms();

// Closes the main screen first (set by start-up), then every other open form.
void setMainFormCloser(std::function<void()> closer);
void UnloadAllForms();

// The main screen's unload (the shutdown steps), set by start-up and run by the screen when it closes.
void setMainFormUnload(std::function<void()> unload);
void UnloadMainForm();

} // namespace ql
