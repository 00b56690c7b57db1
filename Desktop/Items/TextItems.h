#pragma once

#include "Desktop/Items/ViewItem.h"

namespace anadrome::desktop {

/// A line of text.
class LabelItem : public ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    using ViewItem::ViewItem;

    QString text() const;
    bool isEnabled() const override;
};

/// A push button.
class ButtonItem : public ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(QString title READ title NOTIFY changed)

public:
    using ViewItem::ViewItem;

    QString title() const;
    bool isEnabled() const override;
    Q_INVOKABLE void tap();
};

/// One of the program's symbols.
class ImageItem : public ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    /// Its name; empty for none.
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)

public:
    using ViewItem::ViewItem;

    QString symbol() const;
};

} // namespace anadrome::desktop
