#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

class DesktopHost;

/// Whether the window may close: not in the middle of a movie unless the user says so, and not before a movie
/// that is being saved or copied, or a clip that was recorded, is safe. Main thread only.
class CloseQuestion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One for the window")
    /// Whether the user is to be asked. A job that ends takes the question along.
    Q_PROPERTY(bool asked READ isAsked NOTIFY askedChanged)

public:
    /// The host is to outlive it.
    explicit CloseQuestion(DesktopHost& host);

    bool isAsked() const { return m_isAsked; }

    /// The user wants the window closed. If it mustn't be now, the question is asked, or closing() comes when
    /// the movie is saved or copied.
    Q_INVOKABLE bool mayClose();
    /// The answers.
    Q_INVOKABLE void keepGoing() { setAsked(false); }
    Q_INVOKABLE void close();

Q_SIGNALS:
    void askedChanged();
    /// The window is to be closed, and mayClose() agrees.
    void closing();

private:
    /// What the window stays open for, without a question.
    enum class Saving { nothing, movie, copy };
    Saving saving() const;
    void setAsked(bool isAsked);
    void closeIfSaved();

    DesktopHost& m_host;
    bool m_isAsked = false;
    bool m_isAgreed = false;
    Saving m_awaited = Saving::nothing;
};

} // namespace anadrome::desktop
