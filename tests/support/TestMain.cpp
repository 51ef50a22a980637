// The main of every test program: a Qt application object, English (New Zealand), and a fresh
// documents folder so that no test touches the user's own files.
#include "TestEnv.h"
#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("TZ", "Pacific/Auckland");
    QCoreApplication app(argc, argv);
    QLocale::setDefault(qltest::nzLocale());
    qltest::TempDocuments docs; // a safety net; tests that need files make their own
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
