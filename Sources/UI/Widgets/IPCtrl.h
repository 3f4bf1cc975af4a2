// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QFrame>
#include <QString>

class QKeyEvent;
class QLineEdit;

/// An IPv4 address in four fields, each a number from 0 to 255 or an X. The focus moves on
/// while the operator types. How an octet looks, and when its field is done, is for the subclasses.
class IPCtrl : public QFrame
{
    Q_OBJECT

public:
    explicit IPCtrl(QWidget* parent = nullptr);

    /// Empties the four fields.
    void Clear();
    /// Shows a dotted text, and gives the focus to the first field that can be typed in. A text
    /// that hasn't four parts changes no field.
    void SetIP(const QString& address);
    /// The same for an address inside a network pattern, which is dotted as well.
    void SetIPAndMask(const QString& address, const QString& network);

    /// The four fields with dots between them.
    [[nodiscard]] QString GetIP() const;
    /// The same, with an X for an empty field.
    [[nodiscard]] QString GetIPWithWildcards() const;

    /// In device-independent pixels; a larger font than the usual takes what it needs.
    static constexpr int MaximumWidth = 120;

signals:
    /// A key went to this field, which takes it before a slot runs.
    void signalTextChanged(QLineEdit* field);

protected:
    virtual void SetOctet(const QString& octet, QLineEdit& field) = 0;
    virtual void SetMaskedOctet(const QString& octet, const QString& network, QLineEdit& field) = 0;
    /// True if typing can't go on in this field. May put the field's text in its final form.
    virtual bool IsOctetFinal(QLineEdit& field) = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private slots:
    void slotTextChanged(QLineEdit* field);

private:
    void AddField(int place);
    void HandleKey(QLineEdit& field, const QKeyEvent& key);
    void MoveToNext(QLineEdit& field);
    /// The same without a key that asks for it.
    void MoveOnByItself(QLineEdit& field);
    void MoveToPrevious(QLineEdit& field);
    void FocusFirstEditable();
    /// Null at the ends.
    [[nodiscard]] QLineEdit* Neighbour(const QLineEdit& field, int step) const;
    [[nodiscard]] QString Joined(const QString& forEmpty) const;

    std::array<QLineEdit*, 4> fields_{};
    /// The field that got the focus because the one before it was full; a dot that comes next was
    /// meant for that one. Null otherwise.
    const QLineEdit* cameByItself_ = nullptr;
};
