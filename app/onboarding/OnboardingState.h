#pragma once

#include <QList>
#include <QObject>
#include <QProperty>

#include "app/onboarding/OnboardingPage.h"
#include "app/onboarding/onboardingPages.h"
#include "app/shell/Lang.h"

namespace corvane {

/// One showing of the introduction: where the user is in it. Belongs to the main loop.
class OnboardingState final : public QObject {
    Q_OBJECT

    Q_PROPERTY(QList<corvane::OnboardingPage> pages READ pages NOTIFY pagesChanged)
    /// Which of them is shown, from 0.
    Q_PROPERTY(int page READ page NOTIFY pageChanged)
    /// The user went to it from a page before it. Announced before the page is.
    Q_PROPERTY(bool goingForward READ goingForward NOTIFY goingForwardChanged)
    Q_PROPERTY(bool isFirst READ isFirst NOTIFY pageChanged)
    Q_PROPERTY(bool isLast READ isLast NOTIFY pageChanged)

public:
    /// At the first page. `lang` outlives the object.
    explicit OnboardingState(const Lang& lang) : lang_(lang) {}

    /// Built anew each time, in the language of the moment.
    [[nodiscard]] QList<OnboardingPage> pages() const { return onboardingPages(lang_); }
    [[nodiscard]] int page() const { return page_; }
    [[nodiscard]] bool goingForward() const { return goingForward_; }
    [[nodiscard]] bool isFirst() const { return page_ == 0; }
    [[nodiscard]] bool isLast() const { return page_ == lastPage; }

    /// Goes `delta` pages on, or back when it is negative; no further than the first and the last.
    Q_INVOKABLE void advance(int delta);

    /// The user has seen it to its end.
    Q_INVOKABLE void finish() { Q_EMIT finished(); }

    /// The language has changed: announces the texts.
    Q_SLOT void retranslate() { Q_EMIT pagesChanged(); }

Q_SIGNALS:
    void pagesChanged();
    void pageChanged();
    void goingForwardChanged();
    void finished();

private:
    static constexpr int lastPage = onboardingPageCount - 1;

    const Lang& lang_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(OnboardingState, int, page_, 0, &OnboardingState::pageChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(OnboardingState, bool, goingForward_, true,
                                         &OnboardingState::goingForwardChanged)
};

}  // namespace corvane
