#pragma once

#import <Foundation/Foundation.h>

namespace corvane {

/// A copy of `object` as it arrives in another process, nil for nil. Sets `isAllowed` to false when it is, or
/// holds, something of another class than `classes`; fails the test when it cannot travel at all.
id copyAcross(id object, NSSet<Class>* classes, bool& isAllowed);

}  // namespace corvane
