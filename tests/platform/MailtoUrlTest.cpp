#include <string>

#include <gtest/gtest.h>

#include "platform/MailtoUrl.h"

namespace corvane {
namespace {

TEST(MailtoUrl, IsOneRecipientAndPerhapsASubject) {
    EXPECT_TRUE(isMailtoUrl("mailto:help@example.org"));
    EXPECT_TRUE(isMailtoUrl("mailto:first.last+corvane_1-2@mail.example.org"));
    EXPECT_TRUE(isMailtoUrl("mailto:help@localhost"));
    EXPECT_TRUE(isMailtoUrl("mailto:help@example.org?subject="));
    EXPECT_TRUE(isMailtoUrl("mailto:help@example.org?subject=Corvane%20v1.0%20%E2%80%94%20Feedback"));
    EXPECT_TRUE(isMailtoUrl("mailto:help@example.org?subject=50%25%26more"));
}

TEST(MailtoUrl, HasARecipient) {
    for (const char* url :
         {"", "mailto:", "mailto:?subject=x", "mailto:help", "mailto:@example.org", "mailto:help@",
          "mailto:help@.org", "mailto:help@example..org", "mailto:a@example.org,b@example.org",
          "mailto:a@b@example.org", "mailto://help@example.org", "mailto:help%40example.org"}) {
        EXPECT_FALSE(isMailtoUrl(url)) << url;
    }
}

TEST(MailtoUrl, AsksForNothingElse) {
    for (const char* url : {"mailto:help@example.org?attach=/etc/passwd",
                            "mailto:help@example.org?subject=x&attach=/etc/passwd",
                            "mailto:help@example.org?subject=x&cc=all@example.org",
                            "mailto:help@example.org?body=x", "mailto:help@example.org?bcc=all@example.org",
                            "mailto:help@example.org?Subject=x", "mailto:help@example.org?subject=x#fragment",
                            "mailto:help@example.org?subject=x?y", "mailto:help@example.org?"}) {
        EXPECT_FALSE(isMailtoUrl(url)) << url;
    }
}

TEST(MailtoUrl, IsEncodedAndHasNoControlCharacters) {
    for (const char* url :
         {"mailto:help@example.org\n", "mailto:help@example.org?subject=x\n", "\nmailto:help@example.org",
          "mailto:help@example.org?subject=x%0D%0Abcc:all@example.org", "mailto:help@example.org?subject=%00",
          "mailto:help@example.org?subject=%0a", "mailto:help@example.org?subject=%1F",
          "mailto:help@example.org?subject=%7F", "mailto:help@example.org?subject=two words",
          "mailto:help@example.org?subject=—", "mailto:help@example.org?subject=$(id)",
          "mailto:help@example.org?subject=%", "mailto:help@example.org?subject=%4",
          "mailto:help@example.org?subject=%zz", "mailto:hälp@example.org", "mailto:he lp@example.org",
          "mailto:help@example.org?subject=x%\n0"}) {
        EXPECT_FALSE(isMailtoUrl(url)) << url;
    }
    EXPECT_FALSE(isMailtoUrl(std::string("mailto:help@example.org\0", 24)));
}

TEST(MailtoUrl, HasAnotherScheme) {
    for (const char* url : {"MAILTO:help@example.org", "https://example.org/", "mailto;help@example.org",
                            "--help", "xmailto:help@example.org"}) {
        EXPECT_FALSE(isMailtoUrl(url)) << url;
    }
}

TEST(MailtoUrl, IsNotEndless) {
    const std::string start = "mailto:help@example.org?subject=";
    EXPECT_TRUE(isMailtoUrl(start + std::string(2048 - start.size(), 'a')));
    EXPECT_FALSE(isMailtoUrl(start + std::string(2049 - start.size(), 'a')));
    EXPECT_FALSE(isMailtoUrl(start + std::string(1'000'000, 'a')));
}

}  // namespace
}  // namespace corvane
