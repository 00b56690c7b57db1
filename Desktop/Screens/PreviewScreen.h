#pragma once

#include "Desktop/Items/PlayerItem.h"
#include "Desktop/Items/TextItems.h"
#include "Desktop/Screens/MoviePlayer.h"
#include "Desktop/Screens/ShownScreen.h"
#include "Views/Preview/PreviewViewController.h"

#include <QVariantList>

namespace anadrome::desktop {

/// The finished movie.
class PreviewScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::MoviePlayer* player READ player CONSTANT)
    /// Where the movie runs backward and where forward, in its order: maps with "end", the part of the movie
    /// at which the stretch ends, and "backward".
    Q_PROPERTY(QVariantList stretches READ stretches CONSTANT)

    Q_PROPERTY(anadrome::desktop::ButtonItem* saveButton MEMBER saveButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* shareButton MEMBER shareButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* shareAppButton MEMBER shareAppButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* selectOtherVideoButton MEMBER selectOtherVideoButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::PlayerItem* moviePlayer MEMBER moviePlayer CONSTANT)

public:
    PreviewScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    MoviePlayer* player() const { return m_player; }
    const QVariantList& stretches() const { return m_stretches; }

private:
    const PreviewViews& views() const { return controllerAs<PreviewViewController>()->views(); }

public:
    ButtonItem* const saveButton = add<ButtonItem>(views().saveButton);
    ButtonItem* const shareButton = add<ButtonItem>(views().shareButton);
    ButtonItem* const shareAppButton = add<ButtonItem>(views().shareAppButton);
    ButtonItem* const selectOtherVideoButton = add<ButtonItem>(views().selectOtherVideoButton);
    PlayerItem* const moviePlayer;

private:
    MoviePlayer* m_player;
    const QVariantList m_stretches;
};

} // namespace anadrome::desktop
