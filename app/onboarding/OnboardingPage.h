#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QUuid>

namespace corvane {

/// A page of the introduction, in one language.
struct OnboardingPage {
    Q_GADGET
    Q_PROPERTY(QString emoji MEMBER emoji)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString body MEMBER body)
    Q_PROPERTY(QString accent MEMBER accent)

public:
    /// One picture. It adds nothing to what the texts say.
    QString emoji;
    /// With its line breaks, like the body.
    QString title;
    QString body;
    /// A colour role of the views, such as "blue".
    QString accent;
    /// Of this page as it was built; another the next time.
    QUuid id = QUuid::createUuid();

    bool operator==(const OnboardingPage&) const = default;
};

}  // namespace corvane
