// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    constexpr int skipped = 77;
    if (!std::getenv("STAGE_NET")) {
        std::puts("These cases use fixed loopback ports: run them through Tools/stage-net.");
        return skipped;
    }
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
