#pragma once

#include "format/vor2.h"
#include "headless/animation/keying.h"
#include "headless/session.h"
#include "host/export/export_entry.h"
#include "host/export/export_settings.h"
#include "host/export/host_text.h"
#include "host/export/scene_translation.h"
#include "host/plugin/plugin.h"
#include "support/platform/hooks.h"
#include "tests/temporary.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnTransform.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace VOR2_EXPORTER_MAYA {

/// A new scene with the plug-in loaded and the export's settings fresh. What the session says is kept in
/// `messages`, each with its kind's initial: "E: why".
class HOST_TEST : public testing::Test {
protected:
    HOST_TEST() {
        session.new_scene();
        session.set_message_sink([this](headless::MessageKind kind, const std::string& text) {
            messages.push_back(std::string(1, "IWER"[static_cast<int>(kind)]) + ": " + text);
        });
        platform::print_line_hook = [](std::string_view) {};
        EXPECT_TRUE(session.load_plugin("vor2", initializePlugin, uninitializePlugin));
        export_settings() = EXPORT_SETTINGS();
    }
    ~HOST_TEST() override {
        EXPECT_TRUE(session.unload_plugin("vor2"));
        session.set_message_sink(nullptr);
        platform::print_line_hook = nullptr;
        platform::fixed_time.reset();
        platform::fixed_account_name.reset();
    }

    static MDagPath make(const char* type, const char* name, const MDagPath& parent = {}) {
        MFnDagNode node;
        MObject above = parent.length() > 0 ? parent.node() : MObject();
        node.create(type, name, above);
        MDagPath path;
        node.getPath(path);
        return path;
    }
    static MDagPath at(const char* type, const char* name, MVector position, const MDagPath& parent = {}) {
        const MDagPath path = make(type, name, parent);
        MFnTransform(path).setTranslation(position, MSpace::kTransform);
        return path;
    }
    void set(const MDagPath& path, const char* attribute, double value) {
        MFnDagNode(path).findPlug(attribute).setValue(value);
    }
    /// Keys at seconds and values in the host's own units.
    void animate(const MDagPath& path, const char* attribute, std::vector<double> seconds, std::vector<double> values) {
        const auto plug = session.scene().find_plug(std::string(path.fullPathName().asChar()) + "." + attribute);
        ASSERT_TRUE(plug);
        ASSERT_TRUE(headless::set_keys(session.scene(), *plug, headless::KeyTimes(std::move(seconds)),
                                       std::move(values), headless::Tangent::linear));
    }
    static MDagPath path_of(const char* name) {
        MSelectionList list;
        MDagPath path;
        if (MGlobal::getSelectionListByName(name, list)) list.getDagPath(0, path);
        return path;
    }
    static void select(std::vector<const char*> names) {
        MGlobal::clearSelectionList();
        for (const char* name : names) MGlobal::selectByName(name);
    }
    /// The selection, through the whole road but the file.
    static VOR2 exported() {
        VOR2 root;
        EXPECT_TRUE(build_scene(root, "x.vr2"));
        return root;
    }
    static const VOR2_MATRIX_NODE& node(const VOR2& root, const char* name) {
        for (const VOR2_MATRIX_NODE& node : root.matrix_hierarchy.nodes) {
            if (node.name == to_text(name)) return node;
        }
        ADD_FAILURE() << "no node " << name;
        return root.matrix_hierarchy.nodes[0];
    }
    static std::vector<std::string> names(const VOR2& root) {
        std::vector<std::string> out;
        for (const VOR2_MATRIX_NODE& node : root.matrix_hierarchy.nodes)
            out.emplace_back(to_host_text(node.name).asChar());
        return out;
    }
    static std::vector<int> parents(const VOR2& root) {
        std::vector<int> out;
        for (const VOR2_MATRIX_NODE& node : root.matrix_hierarchy.nodes) out.push_back(node.parent_index);
        return out;
    }
    [[nodiscard]] bool said(const std::string& message) const {
        for (const std::string& line : messages) {
            if (line.starts_with(message)) return true;
        }
        return false;
    }

    headless::Session& session = headless::Session::current();
    std::vector<std::string> messages;
};

inline void expect_vector(const VECTOR_3& v, f32 x, f32 y, f32 z, f32 tolerance = 1e-6F) {
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}
inline void expect_rotation(const QUATERNION& q, f32 x, f32 y, f32 z, f32 w, f32 tolerance = 1e-6F) {
    EXPECT_NEAR(q.x, x, tolerance);
    EXPECT_NEAR(q.y, y, tolerance);
    EXPECT_NEAR(q.z, z, tolerance);
    EXPECT_NEAR(q.w, w, tolerance);
}

} // namespace VOR2_EXPORTER_MAYA
