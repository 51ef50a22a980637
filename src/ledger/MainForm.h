#pragma once
// The main screen as start-up and shutdown see it: the desktop's frmWage, or a headless stand-in.
#include <QString>

namespace ql {

class PayView;

class MainForm {
public:
    virtual ~MainForm() = default;
    virtual PayView& view() = 0;
    virtual void setTitle(const QString& title) = 0;
    virtual QString title() const = 0;
    virtual void show() = 0;  // shown without modality; the form's load runs here
    virtual void close() = 0; // the user closes the window; the unload follows
    // The address book's report: the AddressID of the person last edited there.
    virtual void GotMessage(qint32 wParam) = 0;
};

} // namespace ql
