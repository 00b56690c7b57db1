#include <QGuiApplication>
#include <gtest/gtest.h>

/// A window needs no display here, and is drawn without a graphics card.
int main(int argc, char** argv) {
    for (const auto& [name, value] :
         {std::pair("QT_QPA_PLATFORM", "offscreen"), {"QT_QUICK_BACKEND", "software"}})
        if (!qEnvironmentVariableIsSet(name))
            qputenv(name, value);
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
