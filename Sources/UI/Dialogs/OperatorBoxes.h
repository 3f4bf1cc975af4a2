// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

/// The boxes in which the program asks and informs the operator. The program shows real ones; a
/// test can give the answers itself. All of them wait for the answer; frames go on meanwhile.
class OperatorBoxes
{
public:
    virtual ~OperatorBoxes() = default;

    /// A question with Yes and Cancel; true for Yes. Escape is Cancel.
    [[nodiscard]] virtual bool Ask(QWidget* parent, const QString& title, const QString& text,
                                   QMessageBox::StandardButton byDefault) = 0;
    enum class UnsavedAnswer
    {
        Save,
        Discard,
        Cancel
    };
    /// A question about unsaved work, with Save, Discard and Cancel. Return and Escape are Cancel.
    [[nodiscard]] virtual UnsavedAnswer AskToSave(QWidget* parent, const QString& title,
                                                  const QString& text) = 0;
    /// A warning with Yes and No; true for Yes. Return and Escape are No: what goes on here takes
    /// away work.
    [[nodiscard]] virtual bool Confirm(QWidget* parent, const QString& title,
                                       const QString& text) = 0;
    /// A notice with OK.
    virtual void Notify(QWidget* parent, const QString& title, const QString& text) = 0;
    /// A warning with OK.
    virtual void Warn(QWidget* parent, const QString& title, const QString& text) = 0;

    struct Choice
    {
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QString title;
        QString text;
        QStringList buttons;
        int byDefault = 0; ///< the button that Return presses
        int onEscape = -1; ///< the button that Escape presses, -1: Escape does nothing
        QWidget* parent = nullptr;
    };
    /// A box with buttons of its own; the index of the pressed one, -1 when the program ends under
    /// it.
    [[nodiscard]] virtual int Choose(const Choice& choice) = 0;

    // The file dialogs give an empty text when they are cancelled.
    [[nodiscard]] virtual QString OpenFile(QWidget* parent, const QString& caption,
                                           const QString& directory, const QString& filter) = 0;
    /// Several at once, an empty list when it is cancelled.
    [[nodiscard]] virtual QStringList OpenFiles(QWidget* parent, const QString& caption,
                                                const QString& directory,
                                                const QString& filter) = 0;
    /// A name without a suffix gets this one (without a dot).
    [[nodiscard]] virtual QString SaveFile(QWidget* parent, const QString& caption,
                                           const QString& directory, const QString& filter,
                                           const QString& suffix) = 0;
    [[nodiscard]] virtual QString ChooseDirectory(QWidget* parent, const QString& caption) = 0;
};

/// The real boxes.
class WidgetBoxes final : public OperatorBoxes
{
public:
    bool Ask(QWidget* parent, const QString& title, const QString& text,
             QMessageBox::StandardButton byDefault) override;
    UnsavedAnswer AskToSave(QWidget* parent, const QString& title, const QString& text) override;
    bool Confirm(QWidget* parent, const QString& title, const QString& text) override;
    void Notify(QWidget* parent, const QString& title, const QString& text) override;
    void Warn(QWidget* parent, const QString& title, const QString& text) override;
    int Choose(const Choice& choice) override;
    QString OpenFile(QWidget* parent, const QString& caption, const QString& directory,
                     const QString& filter) override;
    QStringList OpenFiles(QWidget* parent, const QString& caption, const QString& directory,
                          const QString& filter) override;
    QString SaveFile(QWidget* parent, const QString& caption, const QString& directory,
                     const QString& filter, const QString& suffix) override;
    QString ChooseDirectory(QWidget* parent, const QString& caption) override;
};
