#pragma once

#include <QObject>
#include <memory>

namespace anadrome {
class UIViewController;
}

namespace anadrome::desktop {

class Hud;
class ScreenList;

/// Asks the user in a dialog for a review of the program, and opens the store's review page on a yes. Main
/// thread only.
class ReviewQuestion : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    ReviewQuestion(const Hud& hud, const ScreenList& presented);

    /// Presents the dialog over a screen once the busy overlay has gone, the tick of a saved movie included.
    /// Drops the request if anything else is presented by then. Holds the screen weakly.
    void request(std::weak_ptr<UIViewController> screen);

private:
    void askIfVisible();

    const Hud& m_hud;
    const ScreenList& m_presented;
    /// Null while there is no request.
    std::weak_ptr<UIViewController> m_screen;
};

} // namespace anadrome::desktop
