#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The question for consent. It can't be left without an answer.
class ConsentScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// How many purposes can be accepted one by one.
    Q_PROPERTY(int purposeCount READ purposeCount CONSTANT)

public:
    using ShownScreen::ShownScreen;

    int purposeCount() const;
    void close() override {}
};

} // namespace anadrome::desktop
