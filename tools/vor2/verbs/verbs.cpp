#include "tools/vor2/verbs/verb.h"

namespace tool {

VerbList make_verbs() {
    VerbList verbs;
    verbs.push_back(make_export_verb());
    verbs.push_back(make_import_verb());
    verbs.push_back(make_host_verb());
    verbs.push_back(make_info_verb());
    verbs.push_back(make_dump_verb());
    verbs.push_back(make_diff_verb());
    verbs.push_back(make_pose_verb());
    verbs.push_back(make_check_verb());
    verbs.push_back(make_view_verb());
    verbs.push_back(make_plot_verb());
    verbs.push_back(make_convert_verb());
    verbs.push_back(make_optimise_verb());
    verbs.push_back(make_upgrade_verb());
    return verbs;
}

} // namespace tool
