// SPDX-License-Identifier: MIT
// The main of every test program that needs Qt's core and opens sockets: its cases run on a private
// network, as a user without files or settings.
#include "Support/Stage.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    Stage::Enter(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    const Support::TemporaryFolder home;
    home.UseAsHome();
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
