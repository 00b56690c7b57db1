#pragma once

#include "Desktop/Items/ControlItems.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UIImageView.h"
#include "Platform/UIKit/UILabel.h"

namespace anadrome::desktop {

/// A line of text.
class LabelItem : public anadrome::desktop::ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    LabelItem(const std::shared_ptr<UILabel>& view, QObject* parent) : ViewItem(view, parent) {}

    QString text() const;
    bool isEnabled() const override;
};

/// A push button.
class ButtonItem : public anadrome::desktop::ControlItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(QString title READ title NOTIFY changed)

public:
    ButtonItem(const std::shared_ptr<UIButton>& view, QObject* parent) : ControlItem(view, parent) {}

    QString title() const;
    Q_INVOKABLE void tap();
};

/// One of the program's symbols.
class ImageItem : public anadrome::desktop::ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    /// Its name; empty for none.
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)

public:
    ImageItem(const std::shared_ptr<UIImageView>& view, QObject* parent) : ViewItem(view, parent) {}

    QString symbol() const;
};

} // namespace anadrome::desktop
