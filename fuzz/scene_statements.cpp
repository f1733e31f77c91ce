#include "fuzz/scene_statements.h"

#include <array>
#include <string_view>

namespace fuzz {
namespace {

constexpr std::array TYPES{"transform",     "joint",           "odd",
                           "mesh",          "animCurveTL",     "animCurveUA",
                           "animCurve",     "pointConstraint", "multiplyDivide",
                           "polyCube",      "nurbsCurve",      "camera",
                           "locator",       "lambert",         "shadingEngine",
                           "file",          "groupId",         "objectSet",
                           "skinCluster",   "tweak",           "displayLayer",
                           "script",        "unitConversion",  "polySphere",
                           "time",          "ikHandle",        "ikEffector",
                           "blendWeighted", "dagPose",         "reverse",
                           "pairBlend",     "oddTransform",    "parentConstraint"};
constexpr std::array NODES{"a",      "b",         "c",      "ns:a",    "a1",    "x",      "|a",
                           "|a|b",   "a|b",       "b|a",    "persp",   "time1", ":time1", ":initialShadingGroup",
                           "aShape", "|b|aShape", "|persp", "persp|a", "ns:b",  "a2",     "layerManager"};
constexpr std::array PATHS{"t",
                           "tx",
                           "r",
                           "rx",
                           "ro",
                           "s",
                           "v",
                           "wm",
                           "pm[1]",
                           "m",
                           "msg",
                           "iog",
                           "o",
                           "i",
                           "i1x",
                           "radi",
                           "jo",
                           "is",
                           "bps",
                           "tg[0].tt",
                           "tg[1].tw",
                           "tg",
                           "ktv[0:2]",
                           "ktv[3]",
                           "kit[1:2]",
                           "kix[0:2]",
                           "tan",
                           "vt[0:2]",
                           "fc[0:1]",
                           "pt[1]",
                           "n[0:2]",
                           "ed[0:2]",
                           "wl[0:1].w",
                           "wl[0].w[1]",
                           "dsm",
                           "uvst[0].uvsn",
                           "rp",
                           "it",
                           "t.tx",
                           "translate.translateX",
                           "w[0]",
                           "b",
                           "st",
                           "pi",
                           "in",
                           "uvst[0].uvsp[0:2]",
                           "clst[0].clsp[0:1]",
                           "iog[0].og[0].gid"};
constexpr std::array ADDED{"a", "b", "c", "d", "e"};
constexpr std::array INDICES{"", "", "[0]", "[1]", "[2]", "[5]", "[1:3]"};
constexpr std::array NUMBERS{"0",  "1",    "-1",  "0.5", "1e10", "-0",         "7",    "1e-7",
                             "90", "33.3", "yes", "no",  "-0.0", "4294967296", "1e300"};
constexpr std::array WORDS{"\"t\"", "on", "f", "\"a b\"", "\"-k\"", "0x1", "\"\\n\\\"q\"", "\"\"", "nan", "mu"};
constexpr std::array MARKS{"", "", "", "-l on ", "-k on ", "-k off ", "-cb on ", "-l off ", "-s 3 ", "-av "};
constexpr std::array KINDS{"double", "bool",        "long",        "enum",      "double3", "compound", "message",
                           "time",   "doubleAngle", "matrix",      "fltMatrix", "string",  "generic",  "int",
                           "",       "odd",         "doubleLinear"};
constexpr std::array ENDS{"", "", " -na", " -f", " -l on"};
constexpr std::array PARENTS{"-add ", "-add ", "", "-w ", "-w -add "};
constexpr std::array SELECTED{":time1", ":initialShadingGroup", ":persp", "a", "b", ":defaultRenderGlobals"};
constexpr std::array OTHERS{"currentUnit -l m -a rad -t ntsc;\n", "currentUnit -l mm -t pal;\n",
                            "playbackOptions -min 3 -max 5;\n", "rename -uid \"A-1\";\n"};

class Writer {
public:
    explicit Writer(std::minstd_rand& random) : random_(random) {}

    std::string statement() {
        switch (random_() % 16) {
        case 0:
        case 1:
        case 2:
        case 3:
            return node();
        case 4:
        case 5:
        case 6:
        case 7:
            return "setAttr " + one(MARKS) + '"' + (chance(5) ? one(NODES) : "") + "." + path() + "\" " + value() +
                   ";\n";
        case 8:
        case 9:
            return added();
        case 10:
        case 11:
            return "connectAttr " + plug() + " " + plug() + one(ENDS) + ";\n";
        case 12:
            return "disconnectAttr " + plug() + " " + plug() + ";\n";
        case 13:
            return "parent -s -nc -r " + one(PARENTS) + quoted(NODES) + (chance(5) ? "" : " " + quoted(NODES)) + ";\n";
        case 14:
            return "select -ne " + one(SELECTED) + ";\n";
        default:
            return one(OTHERS);
        }
    }

private:
    bool chance(unsigned in) { return random_() % in == 0; }
    template<class List>
    std::string one(const List& list) {
        return list[random_() % list.size()];
    }
    template<class List>
    std::string quoted(const List& list) {
        return '"' + one(list) + '"';
    }

    std::string node() {
        std::string out = "createNode " + one(TYPES);
        if (chance(16)) out += " -s";
        if (!chance(8)) out += " -n " + quoted(NODES);
        if (chance(2)) out += " -p " + quoted(NODES);
        return out + ";\n";
    }

    std::string path() {
        if (chance(2)) return one(PATHS);
        std::string out = one(ADDED) + one(INDICES);
        while (chance(2)) out += "." + one(ADDED) + one(INDICES);
        return out;
    }
    std::string plug() { return '"' + one(NODES) + "." + path() + '"'; }

    std::string list(const char* type, unsigned count) {
        std::string out = std::string("-type \"") + type + '"';
        for (unsigned i = 0; i < count; ++i) out += " " + one(NUMBERS);
        return out;
    }

    std::string value() {
        switch (random_() % 12) {
        case 0:
        case 1:
        case 2:
            return one(NUMBERS);
        case 3:
        case 4:
            return list("double3", 3);
        case 5:
            return list("double2", 2);
        case 6:
            return list("matrix", 16);
        case 7:
            return "-type \"string\" " + one(WORDS);
        case 8:
            return "-type \"polyFaces\" f 3 0 1 2 mu 0 3 0 1 2 f 3 0 -2 1";
        case 9:
            return list("doubleArray", random_() % 5);
        case 10:
            return "-type \"string\" \"playbackOptions -min 2 -max 9 -ast 0 -aet 20\"";
        default:
            std::string out;
            for (std::size_t count = random_() % 9; count > 0; --count)
                out += (chance(4) ? one(WORDS) : one(NUMBERS)) + " ";
            return out;
        }
    }

    std::string added() {
        std::string out = "addAttr -ci true -ln " + quoted(ADDED);
        if (chance(2)) out += " -sn " + quoted(ADDED);
        if (!chance(8)) out += (chance(4) ? " -dt " : " -at ") + quoted(KINDS);
        if (chance(3)) out += " -p " + quoted(ADDED);
        if (chance(4)) out += " -m";
        if (chance(4)) out += " -dv " + one(NUMBERS);
        if (chance(6)) out += " -en \"a::b:\"";
        if (chance(8)) out += " -k on";
        return out + ";\n";
    }

    std::minstd_rand& random_;
};

} // namespace

std::string scene_statement(std::minstd_rand& random) {
    return Writer(random).statement();
}

} // namespace fuzz
