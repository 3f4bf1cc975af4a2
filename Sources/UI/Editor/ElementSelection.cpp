// SPDX-License-Identifier: MIT
#include "UI/Editor/ElementSelection.h"

#include <utility>

ElementSelection::ElementSelection(std::function<void()> changed)
    : tellChange_(std::move(changed))
{}

ElementSelection::Batch::Batch(ElementSelection& selection)
    : selection_(selection)
{
    ++selection_.batches_;
}

ElementSelection::Batch::~Batch()
{
    if (--selection_.batches_ == 0)
        selection_.Tell();
}

void ElementSelection::Set(std::int64_t id, bool selected)
{
    if (selected)
        ids_.insert(id);
    else
        ids_.erase(id);
    changed_ = true;
    if (batches_ == 0)
        Tell();
}

void ElementSelection::Tell()
{
    if (std::exchange(changed_, false))
        tellChange_();
}
