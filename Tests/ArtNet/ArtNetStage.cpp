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
