#include <QCoreApplication>
#include <gtest/gtest.h>

/// Every test program has a main thread with an event loop, as the product has.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
