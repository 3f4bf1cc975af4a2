// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportAnswers.h"

using FixtureImport::SameProduct;

ImportAnswers::ImportAnswers(QWidget* parent)
    : SteadyComboBox(parent)
{
    addItem(tr("Leave it out"), static_cast<int>(SameProduct::LeaveOut));
    addItem(tr("Replace the library's"), static_cast<int>(SameProduct::Replace));
    addItem(tr("Keep both, under a new name"), static_cast<int>(SameProduct::KeepBoth));
    connect(this, qOverload<int>(&QComboBox::activated), this, [this](int entry) {
        emit answered(static_cast<SameProduct>(itemData(entry).toInt()));
    });
}

void ImportAnswers::Show(std::optional<SameProduct> answer)
{
    if (!IsOpen())
        setCurrentIndex(answer ? findData(static_cast<int>(*answer)) : -1);
}
