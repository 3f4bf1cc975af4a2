// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "Support/ArtNetBytes.h"
#include "Support/LogCapture.h"
#include "Support/Stage.h"

using ArtNetBytes::Dmx;
using ArtNetBytes::Reply;

/// A service of its own for each case, and a log to read.
class ArtNetStage : public testing::Test
{
protected:
    ArtNetStage();
    ~ArtNetStage() override;

    Support::LogCapture log_;
};
