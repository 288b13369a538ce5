#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/CoreFoundation/Utf8.h"
#include "tests/platform/macos/fakes/IOKit/IoObjects.h"

namespace corvane {
namespace {

TEST(FakeCoreFoundation, EndsAnObjectWithItsLastReference) {
    CfReference first = makeCfObject(std::string("text"));
    CFTypeRef object = first.get();
    CfReference second = retainedCf(object);
    first.reset();
    EXPECT_EQ(heldByCf<std::string>(object), "text");
    second.reset();
    EXPECT_DEATH(static_cast<void>(cfValueOf(object)), "has ended is used");
}

TEST(FakeCoreFoundation, EndsWhatACollectionHoldsWithIt) {
    CfElements elements;
    elements.push_back(makeCfObject(std::int64_t{1}));
    CFTypeRef element = elements.front().get();
    CfReference array = makeCfObject(std::move(elements));
    EXPECT_EQ(CFArrayGetValueAtIndex(static_cast<CFArrayRef>(array.get()), 0), element);
    array.reset();
    EXPECT_DEATH(CFGetTypeID(element), "has ended is used");
}

TEST(FakeCoreFoundation, DiesOfAReleaseTooMany) {
    const CFTypeRef object = makeCfObject(true).release();
    CFRelease(object);
    EXPECT_DEATH(CFRelease(object), "has ended is released");
    EXPECT_DEATH(CFRelease(nullptr), "NULL is released");
    const int none = 0;
    EXPECT_DEATH(CFRelease(&none), "no Core Foundation object is released");
}

TEST(FakeCoreFoundation, DiesOfAUseAsAnotherType) {
    const CfReference text = makeCfObject(std::string("text"));
    EXPECT_DEATH(CFBooleanGetValue(static_cast<CFBooleanRef>(text.get())), "another type");
}

TEST(FakeCoreFoundation, CountsNoReferencesOfConstants) {
    CFStringRef constant = CFSTR("constant");
    CFRelease(constant);
    CFRelease(constant);
    EXPECT_EQ(CFSTR("constant"), constant);
    EXPECT_EQ(CFStringGetLength(constant), 8);
}

TEST(FakeCoreFoundation, KnowsWhatIsUtf8AndCountsInUtf16) {
    EXPECT_EQ(utf16LengthOf(""), 0U);
    EXPECT_EQ(utf16LengthOf("Lüfter"), 6U);
    EXPECT_EQ(utf16LengthOf("🔥"), 2U);
    for (const char* text :
         {"\xFF", "\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
        EXPECT_EQ(utf16LengthOf(text), std::nullopt);
    }
}

TEST(FakeIoKit, KnowsItsObjectsByKindUntilTheyAreGivenBack) {
    const io_object_t service = makeIoObject(IoObjectKind::service);
    EXPECT_TRUE(isIoObject(service, IoObjectKind::service));
    EXPECT_FALSE(isIoObject(service, IoObjectKind::connection));
    EXPECT_EQ(IOObjectRelease(service), kIOReturnSuccess);
    EXPECT_FALSE(isIoObject(service, IoObjectKind::service));
}

}  // namespace
}  // namespace corvane
