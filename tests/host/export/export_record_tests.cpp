#include "tests/host/host_test.h"

#include "host/export/export_record.h"
#include "host/export/scene_finishing.h"

#include <limits>

namespace VOR2_EXPORTER_MAYA {
namespace {

std::string asked;
platform::ANSWER answer;

platform::ANSWER ask(const char* words, const char* caption) {
    asked = std::string(caption) + ": " + words;
    return answer;
}

class EXPORT_RECORD : public HOST_TEST {
protected:
    EXPORT_RECORD() {
        platform::fixed_time = platform::UTC_TIME{2016, 3, 2, 4, 5, 6};
        platform::fixed_account_name = "anna";
        session.scene().file_name = "/scenes/walk.ma";
        asked.clear();
        platform::ask_yes_no_hook = ask;
    }
    ~EXPORT_RECORD() override { platform::ask_yes_no_hook = nullptr; }
};

TEST_F(EXPORT_RECORD, says_who_when_and_from_what) {
    VOR2 root;
    fill_file_info(root, "/out/walk.vr2");
    EXPECT_EQ(root.inf.creator, TEXT(u"Maya v2016.00  "));
    EXPECT_EQ(root.inf.file_info, TEXT(u"USERNAME:\tanna\r\nEXPORTED:\t02/03/2016,04:05:06\r\n"
                                       u"VOR_NAME:\t/out/walk.vr2\r\nMAYA_FILE:\t/scenes/walk.ma\r\n"));
    platform::fixed_account_name = std::string(64, 'n');
    EXPECT_EQ(user_name_line(), TEXT(u"USERNAME:\tUnknown User"));
    platform::fixed_account_name = std::string(63, 'n');
    EXPECT_EQ(user_name_line().length(), 10U + 63U);
}

TEST_F(EXPORT_RECORD, is_marked_when_the_user_goes_on_in_spite_of_problems) {
    const std::string folder = temporary_folder();
    const std::string report = folder + "vor2_export_record.txt";
    const MString path((folder + "vor2_export_record.vr2").c_str());
    VOR2 root;
    root.inf.file_info = u"record";
    EXPECT_TRUE(check_problems(root, path));
    EXPECT_EQ(asked, "");
    root.rigids.push_back(make_owned<VOR2_RIGID>());
    const auto spoil = [&root] {
        root.rigids[0]->vertices.clear();
        root.rigids[0]->vertices.emplace_back().normal.x = std::numeric_limits<f32>::infinity();
    };
    spoil();
    answer = platform::ANSWER::YES;
    EXPECT_FALSE(check_problems(root, path));
    EXPECT_EQ(root.inf.file_info, TEXT(u"record"));
    EXPECT_EQ(asked, "Vor2 exporter: Problems were found in your Maya file!! If problems were found with a weighted "
                     "mesh, it is highly likely some verts have zero weights or have not been applied to a valid bone. "
                     "To check this you can apply an animation in Maya to the mesh. See " +
                         report +
                         " for further details "
                         "regarding any errors. It is highly recommended that you cancel export and fix any problems "
                         "before exporting again. Do you wish to cancel export now?");
    EXPECT_NEAR(root.rigids[0]->vertices[0].normal.length(), 1, 1e-5) << "repaired whatever the answer";
    spoil();
    answer = platform::ANSWER::NO;
    EXPECT_TRUE(check_problems(root, path));
    EXPECT_EQ(root.inf.file_info, TEXT(u"FORCED EXPORT WITH ERRORS!!\r\nrecord"));
    spoil();
    platform::ask_yes_no_hook = nullptr;
    EXPECT_FALSE(check_problems(root, path)) << "in batch mode nobody can say no";
    EXPECT_NE(messages.back().find("nobody can be asked in batch mode. See " + report), std::string::npos);
    EXPECT_EQ(std::remove(report.c_str()), 0) << "the report lies beside the file";
}

TEST_F(EXPORT_RECORD, names_the_report_beside_the_file) {
    EXPECT_EQ(report_file_name("/a/x.vr2"), "/a/x.txt");
    EXPECT_EQ(report_file_name("/a/name"), "/a/ntxt");
    EXPECT_EQ(report_file_name("ab"), "txt");
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
