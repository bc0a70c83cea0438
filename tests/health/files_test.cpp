// The files for other programs: docs/health.md shows them as they are, and others can read them.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "health/foreign_text.h"
#include "health/health_json.h"
#include "health/health_prometheus.h"
#include "health/sample_report.h"

namespace veltrix {
namespace {

using Json = nlohmann::json;

std::string Page() {
    std::ifstream file(VELTRIX_SOURCE_DIR "/docs/health.md");
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The fenced block of a language in the page.
std::string Block(const std::string& language) {
    const std::string page = Page();
    const std::string fence = "```" + language + "\n";
    const std::size_t start = page.find(fence) + fence.size();
    return page.substr(start, page.find("```\n", start) - start);
}

/// A report in which nothing is known and every text is a trap.
HealthReport BareReport() {
    HealthReport report;
    report.station = CleanUtf8("\"A\\\n\xc3\x28 \xe2\x82\xac");
    report.peers = {{true, 0, report.station, "", 0, "Closed"}, {true, 1, report.station, "", 0, "Closed"}};
    return report;
}

TEST(HealthFiles, AreAsThePageShowsThem) {
    EXPECT_EQ(HealthJson(SampleReport()), Block("json"));
    EXPECT_EQ(HealthPrometheus(SampleReport()), Block("text"));
}

TEST(HealthFiles, ThePageExplainsEveryFigure) {
    const std::string page = Page();
    const Json stats = Json::parse(HealthJson(SampleReport()));
    for (const auto& [key, value] : stats.items()) {
        EXPECT_NE(page.find('`' + key), std::string::npos) << key;
        if (!value.is_object() || key == "verdicts") continue;
        for (const auto& [inner, _] : value.items())
            EXPECT_NE(page.find("." + inner + "`"), std::string::npos) << key << '.' << inner;
    }
    std::istringstream lines(HealthPrometheus(SampleReport()));
    for (std::string word, name; lines >> word;)
        if (word == "TYPE" && lines >> name) {
            EXPECT_NE(page.find('`' + name), std::string::npos) << name;
        }
}

TEST(HealthFiles, JsonHoldsNullForWhatIsNotKnown) {
    const Json bare = Json::parse(HealthJson(BareReport()));
    EXPECT_EQ(bare["station"], "\"A\\?\?( €");
    for (const char* const place : {"/sound/rate_hz", "/level/peak_left_db", "/recorder", "/threshold_db",
                                    "/publication/last", "/disk_free_bytes", "/clock_synchronised"})
        EXPECT_TRUE(bare.at(Json::json_pointer(place)).is_null()) << place;
    EXPECT_EQ(bare.at("/verdicts/disk/verdict"_json_pointer), "unknown");
}

/// Text format 0.0.4: each metric has HELP, TYPE and samples, once and in one piece; no series comes twice.
TEST(HealthFiles, PrometheusCanReadEveryLine) {
    const std::regex help("# HELP ([a-z_]+) [^\n]+\\.");
    const std::regex type("# TYPE ([a-z_]+) (gauge|counter)");
    const std::regex sample(
        R"re((([a-z_]+)(?:\{[a-z]+="(?:[^"\\\n]|\\["\\n])*"(?:,[a-z]+="(?:[^"\\\n]|\\["\\n])*")*\})?) (-?[0-9.]+(?:e[+-]?[0-9]+)?|[+-]Inf|NaN))re");
    for (const HealthReport& report : {SampleReport(), BareReport()}) {
        std::istringstream lines(HealthPrometheus(report));
        std::set<std::string> metrics, series;
        std::string metric;
        for (std::string line; std::getline(lines, line);) {
            std::smatch found;
            if (std::regex_match(line, found, help)) {
                metric = found[1];
                EXPECT_TRUE(metrics.insert(metric).second) << metric;
                ASSERT_TRUE(std::getline(lines, line) && std::regex_match(line, found, type)) << line;
                EXPECT_EQ(found[1], metric);
                EXPECT_EQ(found[2] == "counter", metric.ends_with("_total"));
            } else {
                ASSERT_TRUE(std::regex_match(line, found, sample)) << line;
                EXPECT_EQ(found[2], metric);
                EXPECT_TRUE(series.insert(found[1]).second) << line;
            }
        }
        EXPECT_GT(series.size(), 30U);
    }
}

}  // namespace
}  // namespace veltrix
