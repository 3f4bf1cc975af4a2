// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "FixtureImport/ImportPlan.h"
#include "UI/Widgets/SteadyComboBox.h"

/// The three answers to a product that the library has of another fixture.
class ImportAnswers : public SteadyComboBox
{
    Q_OBJECT

public:
    explicit ImportAnswers(QWidget* parent = nullptr);

    /// Nothing shows no entry: there are several answers.
    void Show(std::optional<FixtureImport::SameProduct> answer);

signals:
    /// The operator has chosen one.
    void answered(FixtureImport::SameProduct answer);
};
