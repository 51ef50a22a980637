// The keyring tests' own program: a widget application (the settings screen), English (New Zealand).
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
