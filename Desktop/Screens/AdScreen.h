#pragma once

#include "Desktop/Screens/ShownScreen.h"

#include <QTimer>
#include <QUrl>

namespace anadrome::desktop {

/// An ad over the whole window. The user can close it when it has been there for a few seconds.
class AdScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(QString text READ text CONSTANT)
    /// For an Image; empty for an ad without one.
    Q_PROPERTY(QUrl picture READ picture CONSTANT)
    /// Whether a click on it leads anywhere.
    Q_PROPERTY(bool leads READ leads CONSTANT)
    /// Until it can be closed, rounded up; 0 from then on.
    Q_PROPERTY(int secondsLeft READ secondsLeft NOTIFY secondsLeftChanged)

public:
    AdScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    QString text() const;
    QUrl picture() const;
    bool leads() const;
    int secondsLeft() const { return m_secondsLeft; }

    Q_INVOKABLE void click();
    /// Without effect as long as there are seconds left.
    void close() override;

Q_SIGNALS:
    void secondsLeftChanged();

private:
    int m_secondsLeft;
    QTimer m_second;
};

} // namespace anadrome::desktop
