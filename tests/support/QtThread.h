#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <functional>
#include <future>
#include <memory>

namespace corvane {

/// A thread with a Qt event loop, as the application's main thread has one, and the application object that
/// Qt asks for.
class QtThread {
public:
    /// Runs `begin` on the thread before its event loop and `end` after it.
    QtThread(std::function<void()> begin, std::function<void()> end)
        : thread_(QThread::create([this, begin = std::move(begin), end = std::move(end)] {
              begin();
              QEventLoop loop;
              started_.set_value(&loop);
              loop.exec();
              end();
          })) {
        thread_->start();
        loop_ = started_.get_future().get();
    }
    QtThread(const QtThread&) = delete;
    QtThread& operator=(const QtThread&) = delete;
    ~QtThread() {
        QMetaObject::invokeMethod(loop_, &QEventLoop::quit, Qt::QueuedConnection);
        thread_->wait();
    }

private:
    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};
    std::promise<QEventLoop*> started_;
    std::unique_ptr<QThread> thread_;
    QEventLoop* loop_ = nullptr;
};

}  // namespace corvane
