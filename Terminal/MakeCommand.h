#pragma once

#include "Terminal/Command.h"

namespace anadrome {
class EditViewController;
class JGProgressHUD;
} // namespace anadrome

namespace anadrome::terminal {

/// Runs a whole job on the app's own screens: opens the Edit screen, sets its controls as a hand would, taps
/// Create, and takes the movie that the Preview screen is given. The HUD is the progress, a dialog the error.
/// The user's stored preferences play no part and stay as they are.
class MakeCommand : public Command {
public:
    explicit MakeCommand(const MakeOptions& options);

private:
    void run() override;
    void didPush(UINavigationController& stack, UIViewController& controller, bool animated) override;
    void didPresent(UIViewController& presented, bool animated) override;
    void viewChanged(UIView& view, double duration) override;

    void setPreferences() const;
    void setControls(UIView& screen) const;
    void takeMovie(const URL& movie);

    const MakeOptions m_options;
};

} // namespace anadrome::terminal
