#pragma once

#include <QStringList>
#include <QUrl>
#include <functional>

namespace anadrome::desktop {

// What the user's other programs do with a file. Each asks the desktop's portal, or the service that is
// common to desktops, and the standard tool where there is none. All return at once. Main thread only.

/// Shows a file marked in its folder; the folder alone where no file manager can do that.
void showInFileManager(const QUrl& file);

/// Lets the user choose the program; where nobody asks, it is the usual one for such files.
void openInOtherProgram(const QUrl& file);

/// A mail to be written and sent by the user.
struct Mail {
    QStringList addresses = {};
    QString subject = {};
    QString text = {};
    /// A local file; none if empty.
    QUrl attachment = {};
};

/// Opens the user's mail program with a mail. The completion says whether that worked, or is never called if
/// the program ends before.
void composeMail(const Mail& mail, std::function<void(bool isOpened)> completion);

} // namespace anadrome::desktop
