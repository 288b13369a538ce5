#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/faultOf.h"

namespace corvane {
namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The corpus of the target that this is linked with, by name.
class Corpus : public testing::TestWithParam<std::string> {};

TEST_P(Corpus, HoldsNoFault) {
    int files = 0;
    for (const auto& file : std::filesystem::directory_iterator(CORVANE_CORPORA "/" + GetParam())) {
        EXPECT_EQ(faultOf(contentOf(file.path())), "") << file.path().filename();
        ++files;
    }
    EXPECT_GT(files, 0) << "an empty corpus tests nothing";
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Corpus, testing::Values(CORVANE_TARGET),
                         [](const testing::TestParamInfo<std::string>& target) {
                             std::string name = target.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace
}  // namespace corvane
