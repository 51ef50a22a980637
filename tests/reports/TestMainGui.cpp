// The main of the report tests: a GUI application (the painter needs fonts), offscreen, English
// (New Zealand), and a fresh documents folder.
#include "TestEnv.h"
#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("TZ", "Pacific/Auckland");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QLocale::setDefault(qltest::nzLocale());
    qltest::TempDocuments docs;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
