#pragma once

#include "Desktop/System/HandOverOutcome.h"

#include <QStringList>
#include <QUrl>

namespace anadrome::desktop {

// What the user's other programs do with a file. Each asks the desktop's portal, or the service that is
// common to desktops, and the standard tool where there is none. All return at once; `told` hears later
// what came of it, or never if the other program goes before it says. Main thread only.

/// Shows a file marked in its folder; the folder alone where no file manager can do that.
void showInFileManager(const QUrl& file, HandOverTold told);

/// Lets the user choose the program; where nobody asks, it is the usual one for such files.
void openInOtherProgram(const QUrl& file, HandOverTold told);

/// A mail to be written and sent by the user.
struct Mail {
    QStringList addresses = {};
    QString subject = {};
    QString text = {};
    /// A local file; none if empty.
    QUrl attachment = {};
};

/// Opens the user's mail program with a mail.
void composeMail(const Mail& mail, HandOverTold told);

} // namespace anadrome::desktop
