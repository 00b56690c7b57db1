#pragma once

#include "Desktop/Screens/ShownScreen.h"

#include <QUrl>

namespace anadrome::desktop {

/// The share sheet: hands a movie or a text on to other programs. Each way ends the sheet, unless it fails.
class ShareScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// The texts and links, one a line; empty for a file alone.
    Q_PROPERTY(QString text READ text CONSTANT)
    /// The first file; empty if there is none.
    Q_PROPERTY(QUrl file READ file CONSTANT)
    /// Whether the user has a mail program.
    Q_PROPERTY(bool canMail READ canMail CONSTANT)
    /// Whether a copy is being made.
    Q_PROPERTY(bool copying READ isCopying NOTIFY copyingChanged)

public:
    using ShownScreen::ShownScreen;

    QString text() const;
    QUrl file() const;
    bool canMail() const;
    bool isCopying() const { return m_isCopying; }

    Q_INVOKABLE void copyText();
    Q_INVOKABLE void copyFile();
    Q_INVOKABLE void showInFileManager();
    Q_INVOKABLE void openWithOtherProgram();
    /// Hands file and texts to the mail program; the sheet stays with a dialog over it if that fails.
    Q_INVOKABLE void mail();
    /// Copies the file to a place of the user's choice, over what is there; the sheet stays until that is
    /// done, and with a dialog over it if it fails.
    Q_INVOKABLE void saveCopy(const QUrl& place);
    /// The user chose none.
    void close() override;

Q_SIGNALS:
    void copyingChanged();

private:
    void setCopying(bool isCopying);
    void finish(const char* activity, bool completed) const;
    void showError(const std::string& message) const;

    bool m_isCopying = false;
};

} // namespace anadrome::desktop
