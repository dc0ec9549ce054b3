// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merges at the same time, which share sources, do not know of each other. The thread sanitizer
// watches these, too.

#include <array>
#include <cstddef>
#include <future>
#include <latch>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QuirebindCore/PDFMerger.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

/// A document with a long stream, which is not copied, a link, a layer and a field.
std::string richDocument(const std::string& name) {
    std::string body;
    constexpr std::size_t kBody = 1'100'000;
    while (body.size() < kBody) body += name + std::to_string(body.size()) + '\n';
    return test::fixturePDF(R"({{header 1.7}}
{{object 1 0}} << /Type /Catalog /Pages 2 0 R /OCProperties << /OCGs [7 0 R] /D << >> >>
  /AcroForm << /Fields [8 0 R] /DA (/F 0 Tf) >> >> endobj
{{object 2 0}} << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj
{{object 3 0}} << /Type /Page /Parent 2 0 R /MediaBox [0 0 200 200] /Contents 5 0 R
  /Annots [6 0 R 8 0 R] /Resources << /XObject << /Im 4 0 R >>
  /Properties << /Layer 7 0 R >> >> >> endobj
{{object 4 0}} << /Type /XObject /Subtype /Image /Width 1000 /Height 1100 /BitsPerComponent 8
  /ColorSpace /DeviceGray /Length {{length}} >>
{{stream}}
)" + body + R"(end
{{endstream}}
endobj
{{object 5 0}} << /Length {{length}} >>
{{stream}}
/OC /Layer BDC 0 0 9 9 re f EMC
{{endstream}}
endobj
{{object 6 0}} << /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest [3 0 R /Fit] >> endobj
{{object 7 0}} << /Type /OCG /Name (layer) >> endobj
{{object 8 0}} << /Type /Annot /Subtype /Widget /FT /Tx /T (name) /V ()" +
                            name +
                            R"() /Rect [9 9 99 29] /P 3 0 R >> endobj
{{xref}}
trailer << /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
)");
}

class ConcurrentMerges : public testing::Test {
 protected:
    ConcurrentMerges() {
        add("plain", test::simplePDF(40, {.label = "plain"}));
        add("packed", test::simplePDF(60, {.label = "packed", .objectStreams = true}));
        add("rich", richDocument("rich"));
        add("other", richDocument("other"));
        std::string damaged = test::simplePDF(20, {.label = "damaged"});
        add("damaged", damaged.erase(damaged.rfind("xref")));
    }

    /// Merges the sources of a set; gives the bytes of the output, which gets that name.
    [[nodiscard]] std::string merged(const std::vector<std::string>& sources,
                                     const std::string& output) const {
        std::vector<URL> urls;
        for (const std::string& source : sources) urls.push_back(URL::file(folder_ / source));
        PDFMerger::merge(urls, URL::file(folder_ / output));
        return folder_.read(output);
    }

    static constexpr std::size_t kSets = 4;
    /// All have sources in common, in another order.
    const std::array<std::vector<std::string>, kSets> sets_{
        {{"plain", "packed", "rich", "other", "damaged"},
         {"other", "rich", "plain", "plain"},
         {"damaged", "rich", "packed", "rich"},
         {"packed", "other", "damaged", "plain", "rich"}}};

 private:
    void add(const std::string& name, const std::string& bytes) { folder_.write(name, bytes); }

    TemporaryFolder folder_;
};

TEST_F(ConcurrentMerges, WriteWhatTheyWriteOneAfterTheOther) {
    std::array<std::string, kSets> expected;
    for (std::size_t set = 0; set < kSets; ++set)
        expected[set] = merged(sets_[set], "alone-" + std::to_string(set));

    for (int round = 0; round < 5; ++round) {
        std::latch start{kSets};
        std::vector<std::future<std::string>> merges;
        for (std::size_t set = 0; set < kSets; ++set)
            merges.push_back(std::async(std::launch::async, [&, set] {
                start.arrive_and_wait();
                return merged(sets_[set], "together-" + std::to_string(set));
            }));
        for (std::size_t set = 0; set < kSets; ++set) {
            // Megabytes would be of no use in a message.
            EXPECT_TRUE(merges[set].get() == expected[set]) << "set " << set;
        }
    }
}

TEST_F(ConcurrentMerges, OfWhichOneIsRefusedLeaveTheOthersAlone) {
    const std::string expected = merged(sets_[0], "alone");
    std::latch start{2};
    auto refused = std::async(std::launch::async, [&] {
        start.arrive_and_wait();
        return merged({"plain", "rich", "missing"}, "refused");
    });
    auto written = std::async(std::launch::async, [&] {
        start.arrive_and_wait();
        return merged(sets_[0], "together");
    });
    EXPECT_THROW((void)refused.get(), PDFMerger::Failure);
    EXPECT_TRUE(written.get() == expected);
}

}  // namespace
}  // namespace quirebind
