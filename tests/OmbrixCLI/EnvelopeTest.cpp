#include "OmbrixCLI/Envelope.h"

#include <gtest/gtest.h>

#include <limits>

namespace ombrix {
namespace {

TEST(Envelope, KeysAreSortedAndAnAbsentFixHasNone) {
    FailureEnvelope envelope{.command = "/bin/tool get 1",
                             .error = {"database_error", "gone", std::nullopt},
                             .meta = {}};
    envelope.meta.generatedAt = "2026-03-02T09:00:00Z";
    const std::string meta =
        "  \"meta\" : {\n    \"dbPath\" : \"\",\n"
        "    \"generatedAt\" : \"2026-03-02T09:00:00Z\",\n"
        "    \"schemaVersion\" : 1,\n    \"warnings\" : []\n  },\n";
    EXPECT_EQ(Json::write(encode(envelope), Json::Style::envelope),
              "{\n  \"command\" : \"\\/bin\\/tool get 1\",\n  \"error\" : {\n"
              "    \"code\" : \"database_error\",\n    \"message\" : \"gone\"\n  },\n" +
                  meta + "  \"ok\" : false\n}");
    envelope.error.fix = "";
    EXPECT_NE(Json::write(encode(envelope), Json::Style::envelope).find("\"fix\" : \"\""),
              std::string::npos);
}

TEST(Envelope, WhatJsonCannotHoldPrintsNothingAndGoesOn) {
    const CLIContext context("tool", {.dbPath = "/db"});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    emitSuccess(context, std::numeric_limits<double>::infinity());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(errors.starts_with("Failed to encode JSON output: ")) << errors;
    EXPECT_TRUE(errors.ends_with("\n"));

    testing::internal::CaptureStdout();
    emitSuccess(context, "\xFF", {"a/b"});
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(output.starts_with("{\n  \"command\" : \"tool\",\n  \"data\" : \"\uFFFD\",\n"))
        << output;
    EXPECT_TRUE(
        output.ends_with("\"warnings\" : [\n      \"a\\/b\"\n    ]\n  },\n  \"ok\" : true\n}\n"))
        << output;
}
}  // namespace
}  // namespace ombrix
