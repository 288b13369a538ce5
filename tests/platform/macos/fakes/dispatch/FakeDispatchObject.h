#pragma once

namespace corvane {

/// What a handle of Dispatch leads to. Destroyed as it is released.
class FakeDispatchObject {
public:
    FakeDispatchObject() = default;
    FakeDispatchObject(const FakeDispatchObject&) = delete;
    FakeDispatchObject& operator=(const FakeDispatchObject&) = delete;
    virtual ~FakeDispatchObject() = default;

    virtual void resume() = 0;

    void* context = nullptr;
};

}  // namespace corvane
