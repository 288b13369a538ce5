#pragma once

#include <QGuiApplication>
#include <string>
#include <vector>

#include "app/windows/SuddenEnd.h"

namespace corvane {

/// The application as Qt sees it. It is made before any window and before Qt starts threads, outlives all
/// windows, and goes on when the last one is closed. There is one; its thread is the main one. When Qt loses
/// the display, the process ends at once, with EXIT_FAILURE.
///
/// What Qt is to do is told to Qt alone: a variable of the environment would be told to every program that
/// the application starts as well.
class QtApplication {
public:
    /// `arguments` begin with the program's name; what else Qt knows of them it takes. `platform` is a Qt
    /// platform, such as "xcb".
    QtApplication(std::vector<std::string> arguments, std::string platform);

private:
    /// The arguments, which Qt keeps a hold of and takes its own out of.
    struct Arguments {
        explicit Arguments(std::vector<std::string> given);

        std::vector<std::string> texts;
        std::vector<char*> pointers;
        int count;
    };

    Arguments arguments_;
    QGuiApplication application_;
    SuddenEnd suddenEnd_;
};

}  // namespace corvane
