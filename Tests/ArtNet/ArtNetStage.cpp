// SPDX-License-Identifier: MIT
#include "ArtNetStage.h"

#include "ArtNet/ZenArtNetService.h"

ArtNetStage::ArtNetStage()
{
    Zen::ArtNetService::SetGlobal(
        std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
}

ArtNetStage::~ArtNetStage()
{
    Zen::ArtNetService::SetGlobal(nullptr);
}

int main(int argc, char** argv)
{
    Stage::Enter(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
