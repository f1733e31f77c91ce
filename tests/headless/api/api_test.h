#pragma once

#include "headless/session.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnIkJoint.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MTime.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A session with a new scene, and what it says kept in `messages`, each with its kind's initial: "E: why".
class ApiTest : public testing::Test {
protected:
    ApiTest() {
        session.new_scene();
        session.set_message_sink([this](headless::MessageKind kind, const std::string& text) {
            messages.push_back(std::string(1, "IWER"[static_cast<int>(kind)]) + ": " + text);
        });
    }
    ~ApiTest() override { session.set_message_sink(nullptr); }

    headless::Scene& scene() { return session.scene(); }
    static MObject node(const char* name) {
        MSelectionList list;
        MObject out;
        if (list.add(name)) list.getDependNode(0, out);
        return out;
    }
    static MDagPath path(const char* name) {
        MSelectionList list;
        MDagPath out;
        if (list.add(name)) list.getDagPath(0, out);
        return out;
    }
    MObject make(const char* type, const char* name, MObject parent = MObject::kNullObj) {
        return MFnDagNode().create(type, name, parent);
    }
    static std::vector<std::string> names(const MSelectionList& list);

    headless::Session& session = headless::Session::current();
    std::vector<std::string> messages;
};

inline std::vector<std::string> ApiTest::names(const MSelectionList& list) {
    std::vector<std::string> out;
    for (unsigned int i = 0; i < list.length(); ++i) {
        MDagPath path;
        MObject node;
        if (list.getDagPath(i, path))
            out.push_back(path.fullPathName().asChar());
        else if (list.getDependNode(i, node))
            out.push_back(MFnDependencyNode(node).name().asChar());
    }
    return out;
}

using Names = std::vector<std::string>;
