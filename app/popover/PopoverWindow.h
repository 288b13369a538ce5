#pragma once

#include <QQuickView>
#include <functional>
#include <memory>
#include <optional>

#include "platform/SerialQueue.h"

namespace corvane {

/// A frameless window that closes like a menu. What it shows is loaded by its owner; its size is the
/// content's ideal one as far as the screen has room, which the content learns as `availableHeight`. Main
/// loop.
class PopoverWindow final : public QQuickView {
    Q_OBJECT

public:
    PopoverWindow(QQmlEngine& engine, SerialQueue& mainLoop);

    /// See Popover.
    void open(std::optional<QPoint> anchor);
    /// Takes along what lies open over the content, such as a menu; a question is there again with the
    /// content.
    Q_SLOT void dismiss();

    /// What the user did elsewhere, so that it was dismissed.
    struct Departure {
        BootTime time;
        /// Where the mouse was pressed; none when only the keyboard was taken away.
        std::optional<QPoint> pressed;
    };
    /// The last one; none before.
    [[nodiscard]] const std::optional<Departure>& departure() const { return departure_; }

Q_SIGNALS:
    void dismissed();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void place();
    void depart(std::optional<QPoint> pressed);
    void grabPointer();
    [[nodiscard]] QScreen& screenOf(std::optional<QPoint> anchor) const;

    SerialQueue& mainLoop_;
    /// Until it is dismissed, which takes its keyboard too.
    bool isOpen_ = false;
    std::optional<QPoint> anchor_;
    std::optional<Departure> departure_;
    int grabAttempts_ = 0;
    std::unique_ptr<Timer> grabTimer_;
};

}  // namespace corvane
