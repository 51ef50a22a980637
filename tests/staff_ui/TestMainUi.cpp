// The set-up screens' own test program: a widget application, English (New Zealand), offscreen.
#include "TestEnv.h"
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("TZ", "Pacific/Auckland");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QLocale::setDefault(qltest::nzLocale());
    qltest::TempDocuments docs;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
