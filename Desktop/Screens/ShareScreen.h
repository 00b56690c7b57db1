#pragma once

#include "Desktop/Screens/ShownScreen.h"

#include <QUrl>

namespace anadrome::desktop {

/// The share sheet: hands a movie or a text on to other programs. Each way ends the sheet.
class ShareScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// The texts and links, one a line; empty for a file alone.
    Q_PROPERTY(QString text READ text CONSTANT)
    /// The first file; empty if there is none.
    Q_PROPERTY(QUrl file READ file CONSTANT)

public:
    using ShownScreen::ShownScreen;

    QString text() const;
    QUrl file() const;

    Q_INVOKABLE void copyText();
    Q_INVOKABLE void copyFile();
    Q_INVOKABLE void showInFileManager();
    Q_INVOKABLE void openWithOtherProgram();
    /// The user chose none.
    void close() override;

private:
    void finish(const char* activity, bool completed) const;
};

} // namespace anadrome::desktop
