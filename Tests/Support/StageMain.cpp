// SPDX-License-Identifier: MIT
// The main of every test program whose cases open sockets: they run on a private network.
#include <gtest/gtest.h>

#include "Support/Stage.h"

int main(int argc, char** argv)
{
    Stage::Enter(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
