// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "Stage.h"
#include "Support/LogCapture.h"

/// A service of its own for each case, and a log to read.
class ArtNetStage : public testing::Test
{
protected:
    ArtNetStage();
    ~ArtNetStage() override;

    Support::LogCapture log_;
};
