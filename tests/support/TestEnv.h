#pragma once
// Every test runs under English (New Zealand) with its data and settings in a fresh folder.
#include <QLocale>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace qltest {

// Points FERNHOLD_DOCUMENTS at a new temporary folder for the life of the object.
class TempDocuments {
public:
    TempDocuments();
    ~TempDocuments();
    QString path() const { return m_dir.path(); }
    // The suite's common folder under it (created), where Fernhold.ini and FHErrors.log live.
    QString commonFolder() const;
    // Writes text to a file below the folder and returns its full path.
    QString writeFile(const QString& relativePath, const QByteArray& contents) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_previous;
    bool m_hadPrevious = false;
};

// Sets the default locale for the life of the object (QLocale() is what the system reads).
class LocaleGuard {
public:
    explicit LocaleGuard(const QLocale& locale) : m_previous(QLocale()) { QLocale::setDefault(locale); }
    ~LocaleGuard() { QLocale::setDefault(m_previous); }

private:
    QLocale m_previous;
};

// A fixture with a fresh documents folder per test.
class DocumentsTest : public ::testing::Test {
protected:
    std::unique_ptr<TempDocuments> docs = std::make_unique<TempDocuments>();
};

inline QLocale nzLocale() { return QLocale(QLocale::English, QLocale::NewZealand); }
inline QLocale germanLocale() { return QLocale(QLocale::German, QLocale::Germany); }

} // namespace qltest
