#pragma once

#include "headless/session.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A session with a new scene, and what it says kept in `messages`, each with its kind's initial: "E: why".
class ScriptTest : public testing::Test {
protected:
    ScriptTest() {
        session.new_scene();
        session.set_message_sink([this](headless::MessageKind kind, const std::string& text) {
            messages.push_back(std::string(1, "IWER"[static_cast<int>(kind)]) + ": " + text);
        });
    }
    ~ScriptTest() override { session.set_message_sink(nullptr); }

    headless::Scene& scene() { return session.scene(); }
    /// The script's value as text, or "error: why".
    std::string mel(const std::string& text) { return told(session.run_mel(text)); }
    std::string python(const std::string& text) { return told(session.run_python(text)); }

    /// Expects a script to give these numbers, but for rounding.
    void expect_numbers(const std::string& script, const std::vector<double>& wanted) {
        const auto done = session.run_mel(script);
        ASSERT_TRUE(done) << script << ": " << done.error().text();
        ASSERT_EQ(done->numbers.size(), wanted.size()) << script;
        for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_NEAR(done->numbers[i], wanted[i], 1e-9) << script << i;
    }

    headless::Session& session = headless::Session::current();
    std::vector<std::string> messages;

private:
    static std::string told(const headless::Result<headless::CommandResult>& done) {
        return done ? done->text() : "error: " + done.error().text();
    }
};
