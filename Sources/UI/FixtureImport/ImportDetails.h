// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "FixtureImport/ImportPlan.h"

class ImportAnswers;
class ImportChannelTable;
class MapPicture;
class QLabel;
class QTreeView;

/// What is known of one row of an import: its map, its name in the library, its channels with their
/// reasons, or why it is left out.
class ImportDetails : public QWidget
{
    Q_OBJECT

public:
    explicit ImportDetails(QWidget* parent = nullptr);

    /// Null shows nothing.
    void Show(const FixtureImport::PlanNode* node);

signals:
    /// For the fixture that is shown.
    void answered(FixtureImport::SameProduct answer);

private:
    void FitColumns();
    QLabel* AddText(const char* objectName);

    MapPicture* picture_ = nullptr;
    QLabel* nameLabel_ = nullptr;
    QLabel* wordsLabel_ = nullptr;
    QLabel* answerLabel_ = nullptr;
    ImportAnswers* answers_ = nullptr;
    ImportChannelTable* channels_ = nullptr;
    QTreeView* channelList_ = nullptr;
};
