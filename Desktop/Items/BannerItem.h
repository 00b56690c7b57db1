#pragma once

#include "Desktop/Items/ViewItem.h"
#include "Platform/Services/Ads/GADBannerView.h"

#include <QUrl>

namespace anadrome::desktop {

/// The room of an ad in a screen.
class BannerItem : public anadrome::desktop::ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    /// Whether one may come: the program's place has a name at the ad network.
    Q_PROPERTY(bool offered READ isOffered CONSTANT)
    /// Whether an ad has come.
    Q_PROPERTY(bool filled READ isFilled NOTIFY changed)
    /// In points.
    Q_PROPERTY(double height READ height NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    /// For an Image; empty for an ad without one.
    Q_PROPERTY(QUrl picture READ picture NOTIFY changed)
    /// Whether a click leads anywhere.
    Q_PROPERTY(bool leads READ leads NOTIFY changed)

public:
    BannerItem(const std::shared_ptr<GADBannerView>& view, QObject* parent) : ViewItem(view, parent) {}

    static bool isOffered();
    bool isFilled() const;
    double height() const;
    QString text() const;
    QUrl picture() const;
    bool leads() const;
    Q_INVOKABLE void click();
};

} // namespace anadrome::desktop
