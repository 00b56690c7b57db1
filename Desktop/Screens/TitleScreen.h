#pragma once

#include "Desktop/Items/ControlItems.h"
#include "Desktop/Items/TextItems.h"
#include "Desktop/Screens/ShownScreen.h"
#include "Views/Title/TitleViewController.h"

#include <QQmlListProperty>

namespace anadrome::desktop {

/// Where a clip comes from.
class TitleScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::ButtonItem* infoButton MEMBER infoButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* cameraButton MEMBER cameraButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* cameraNotice MEMBER cameraNotice CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* libraryButton MEMBER libraryButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* iCloudButton MEMBER iCloudButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* videoQualityLabel MEMBER videoQualityLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::SegmentsItem* videoQualitySegmentedControl MEMBER
                   videoQualitySegmentedControl CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* moreAppsLabel MEMBER moreAppsLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* shareAppButton MEMBER shareAppButton CONSTANT)
    /// The maker's other programs, one at each index.
    Q_PROPERTY(QQmlListProperty<anadrome::desktop::LabelItem> appLabels READ appLabels CONSTANT)
    Q_PROPERTY(QQmlListProperty<anadrome::desktop::ButtonItem> appButtons READ appButtons CONSTANT)

public:
    TitleScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
        : ShownScreen(controller, std::move(kind), parent) {
        for (const TitleViews::App& app : views().apps) {
            m_appLabels.append(add<LabelItem>(app.label));
            m_appButtons.append(add<ButtonItem>(app.button));
        }
    }

    QQmlListProperty<LabelItem> appLabels() { return {this, &m_appLabels}; }
    QQmlListProperty<ButtonItem> appButtons() { return {this, &m_appButtons}; }

private:
    const TitleViews& views() const { return controllerAs<TitleViewController>()->views(); }

public:
    ButtonItem* const infoButton = add<ButtonItem>(views().infoButton);
    ButtonItem* const cameraButton = add<ButtonItem>(views().cameraButton);
    LabelItem* const cameraNotice = add<LabelItem>(views().cameraNotice);
    ButtonItem* const libraryButton = add<ButtonItem>(views().libraryButton);
    ButtonItem* const iCloudButton = add<ButtonItem>(views().iCloudButton);
    LabelItem* const videoQualityLabel = add<LabelItem>(views().videoQualityLabel);
    SegmentsItem* const videoQualitySegmentedControl =
        add<SegmentsItem>(views().videoQualitySegmentedControl);
    LabelItem* const moreAppsLabel = add<LabelItem>(views().moreAppsLabel);
    ButtonItem* const shareAppButton = add<ButtonItem>(views().shareAppButton);

private:
    QList<LabelItem*> m_appLabels;
    QList<ButtonItem*> m_appButtons;
};

} // namespace anadrome::desktop
