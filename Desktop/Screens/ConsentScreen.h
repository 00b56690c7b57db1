#pragma once

#include "Desktop/Items/ControlItems.h"
#include "Desktop/Items/TextItems.h"
#include "Desktop/Screens/ShownScreen.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"

#include <QQmlListProperty>

namespace anadrome::desktop {

/// The question for consent. It can't be left without an answer.
class ConsentScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::LabelItem* title MEMBER title CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* message MEMBER message CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* accept MEMBER accept CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* refuse MEMBER refuse CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* manage MEMBER manage CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* confirm MEMBER confirm CONSTANT)
    /// The purposes that can be accepted one by one, one at each index.
    Q_PROPERTY(QQmlListProperty<anadrome::desktop::LabelItem> purposeLabels READ purposeLabels CONSTANT)
    Q_PROPERTY(QQmlListProperty<anadrome::desktop::SwitchItem> purposeSwitches READ purposeSwitches CONSTANT)

public:
    ConsentScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
        : ShownScreen(controller, std::move(kind), parent) {
        for (const auto& [label, acceptance] : views().rows) {
            m_purposeLabels.append(add<LabelItem>(label));
            m_purposeSwitches.append(add<SwitchItem>(acceptance));
        }
    }

    QQmlListProperty<LabelItem> purposeLabels() { return {this, &m_purposeLabels}; }
    QQmlListProperty<SwitchItem> purposeSwitches() { return {this, &m_purposeSwitches}; }
    void close() override {}

private:
    const UMPConsentFormViewController::Views& views() const {
        return controllerAs<UMPConsentFormViewController>()->views();
    }

public:
    LabelItem* const title = add<LabelItem>(views().title);
    LabelItem* const message = add<LabelItem>(views().message);
    ButtonItem* const accept = add<ButtonItem>(views().accept);
    ButtonItem* const refuse = add<ButtonItem>(views().refuse);
    ButtonItem* const manage = add<ButtonItem>(views().manage);
    ButtonItem* const confirm = add<ButtonItem>(views().confirm);

private:
    QList<LabelItem*> m_purposeLabels;
    QList<SwitchItem*> m_purposeSwitches;
};

} // namespace anadrome::desktop
