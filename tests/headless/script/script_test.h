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

    headless::Session& session = headless::Session::current();
    std::vector<std::string> messages;

private:
    static std::string told(const headless::Result<headless::CommandResult>& done) {
        return done ? done->text() : "error: " + done.error().text();
    }
};
