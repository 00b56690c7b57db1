#pragma once

#include "Desktop/Screens/ShownScreen.h"
#include "Desktop/System/HandOverOutcome.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <QUrl>
#include <optional>

namespace anadrome::desktop {

/// The share sheet: hands a movie or a text on to other programs. A way that succeeds ends the sheet; with
/// one that fails it stays, under a dialog.
class ShareScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// The texts and links, one a line; empty for a file alone.
    Q_PROPERTY(QString text READ text CONSTANT)
    /// The first file, as other programs get it; empty if there is none.
    Q_PROPERTY(QUrl file READ file CONSTANT)
    Q_PROPERTY(bool hasFile READ hasFile CONSTANT)
    /// Where a copy would be saved, if the user has no wish of their own.
    Q_PROPERTY(QUrl usualPlace READ usualPlace CONSTANT)
    /// Whether the user has a mail program.
    Q_PROPERTY(bool canMail READ canMail CONSTANT)
    /// Whether a way has been taken, and its outcome isn't known.
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)

public:
    ShareScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    QString text() const;
    QUrl file() const;
    bool hasFile() const { return !m_file.empty(); }
    QUrl usualPlace() const;
    bool canMail() const;
    bool isBusy() const { return m_isBusy; }
    /// Whether a copy is being made, which isn't to be broken off.
    bool isCopying() const { return m_isCopying; }

    // The ways; without effect while it is busy.
    Q_INVOKABLE void copyText();
    Q_INVOKABLE void copyFile();
    Q_INVOKABLE void showInFileManager();
    Q_INVOKABLE void openWithOtherProgram();
    /// Hands file and texts to the mail program.
    Q_INVOKABLE void mail();
    /// Copies the file to a place of the user's choice, over what is there.
    Q_INVOKABLE void saveCopy(const QUrl& place);
    /// The user chose none. Without effect while a copy is being made.
    void close() override;

Q_SIGNALS:
    void busyChanged();

private:
    void setBusy(bool isBusy, bool isCopying = false);
    /// Hears of the outcome of a way, and tells the user with that text if it failed.
    HandOverTold outcomeOf(const char* activity, const char* failureKey);
    void copied(const std::optional<NSError>& error);
    void finish(const char* activity, bool completed) const;
    void showError(const std::string& message) const;

    /// Empty for none.
    URL m_file;
    bool m_isBusy = false;
    bool m_isCopying = false;
};

} // namespace anadrome::desktop
