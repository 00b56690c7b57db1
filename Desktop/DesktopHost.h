#pragma once

#include "Desktop/Screens/Hud.h"
#include "Desktop/Screens/ScreenList.h"
#include "Desktop/System/JobWatch.h"
#include "Desktop/System/MailProgram.h"
#include "Desktop/System/ReviewQuestion.h"
#include "Platform/Foundation/URL.h"
#include "Platform/UIKit/UIHost.h"

#include <QSizeF>
#include <QUrl>

namespace anadrome::desktop {

/// Shows the program in a window: keeps what is on the screen for the storyboards, and tells them of changes.
/// It is the application's host as long as it lives. Main thread only.
class DesktopHost : public QObject, public UIHost {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One for the program")
    Q_PROPERTY(anadrome::desktop::ScreenList* stack READ stack CONSTANT)
    /// What lies over the stack.
    Q_PROPERTY(anadrome::desktop::ScreenList* presented READ presented CONSTANT)
    Q_PROPERTY(anadrome::desktop::Hud* hud READ hud CONSTANT)
    Q_PROPERTY(anadrome::desktop::JobWatch* job READ job CONSTANT)

public:
    DesktopHost();
    ~DesktopHost() override;

    ScreenList* stack() { return &m_stack; }
    ScreenList* presented() { return &m_presented; }
    const ScreenList* presented() const { return &m_presented; }
    Hud* hud() { return &m_hud; }
    /// The movie that is being made.
    JobWatch* job() const { return m_job.get(); }

    /// The stack at the root of the window, with what it shows already. Held weakly.
    void showStack(const std::shared_ptr<UINavigationController>& stack);
    /// The window's inside, in points.
    Q_INVOKABLE void setSize(double width, double height);

    /// Whether a clip that is brought now would be opened: nothing lies over the screens, and no movie waits
    /// to be saved.
    Q_INVOKABLE bool acceptsClip() const;
    /// Opens the Edit screen with a clip and leaves the one that is open. While none is accepted the user is
    /// given notice; what can't be a clip ends in a dialog.
    void openFile(const URL& clip);
    /// The same with an address, which may be of anything.
    Q_INVOKABLE void openClip(const QUrl& clip);
    /// Opens the file that the clipboard holds, if it holds one.
    Q_INVOKABLE void pasteClip();
    /// The user goes back by one screen, unless something lies over it.
    Q_INVOKABLE void back();

    void didPush(UINavigationController& stack, UIViewController& controller, bool animated) override;
    void didPop(UINavigationController& stack, const std::vector<std::shared_ptr<UIViewController>>& popped,
                bool animated) override;
    void didPresent(UIViewController& presented, bool animated) override;
    void didDismiss(UIViewController& dismissed, bool animated) override;
    void viewChanged(UIView& view, double duration) override;
    bool openURL(const std::string& address) override;
    bool canSendMail() const override { return m_mailProgram.exists(); }
    void requestReview(UIWindowScene&) override;

Q_SIGNALS:
    /// Something to be told in passing.
    void noticeGiven(const QString& text);

private:
    /// Also in the moment between two stages of a job, in which nothing is shown.
    bool isAtWork() const { return m_hud.isVisible() || m_job->isRunning(); }
    bool isClipWelcome();
    void refuseClip(const QString& reason);
    void add(ScreenList& list, UIViewController& controller);

    ScreenList m_stack;
    ScreenList m_presented;
    Hud m_hud;
    const std::shared_ptr<JobWatch> m_job = std::make_shared<JobWatch>();
    ReviewQuestion m_reviewQuestion{m_hud, m_presented};
    MailProgram m_mailProgram;
    std::weak_ptr<UINavigationController> m_navigation;
    QSizeF m_size{420, 860};
};

} // namespace anadrome::desktop
