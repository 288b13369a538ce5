#pragma once

#include <cstdint>
#include <string>

#include "bench/HwmonTree.h"
#include "bench/MeasuredProcess.h"

namespace corvane {

/// What a bus lets a user have: next to everything, as a session's does, or 256 connections, as a system's.
enum class BusLimits { ofSession, ofSystem };

/// A real helper process on a private bus and on attribute files of its own.
class MeasuredHelper {
public:
    /// `corvane` is the program's path; `limits` are the bus's. Throws when the helper does not answer within
    /// 10 s.
    MeasuredHelper(const std::string& corvane, BusLimits limits);

    [[nodiscard]] const HwmonTree& tree() const { return tree_; }
    [[nodiscard]] const std::string& busAddress() const { return address_; }
    [[nodiscard]] int id() const { return helper_.id(); }

    /// A figure of /proc/<id>/status, such as "VmRSS": KiB, or a plain number. Throws when there is none.
    [[nodiscard]] double statusFigure(const std::string& name) const;
    /// Processor time of all its threads so far, ns.
    [[nodiscard]] std::uint64_t processorTime() const;

    /// Ends it with SIGTERM; its exit status.
    int stop();

private:
    HwmonTree tree_;
    std::string address_ = "unix:path=" + tree_.runFolder() + "/bus";
    MeasuredProcess bus_;
    MeasuredProcess helper_;
};

}  // namespace corvane
