// Statements of Maya ASCII for the texts of a target, with so few names and values that what one makes another meets.

#include "fuzz/text_mutator.h"

#include <algorithm>
#include <string_view>

namespace {

// Lists of words.
constexpr std::string_view TYPES =
    "transform joint odd mesh animCurveTL animCurveUA animCurve pointConstraint parentConstraint multiplyDivide "
    "polyCube polySphere nurbsCurve camera locator lambert shadingEngine file groupId objectSet skinCluster tweak "
    "reference fosterParent displayLayer script unitConversion time ikHandle ikEffector ikRPsolver ikSCsolver "
    "poleVectorConstraint blendWeighted dagPose reverse pairBlend oddTransform animLayer animBlendNodeAdditiveDL "
    "animBlendNodeAdditiveRotation animBlendNodeAdditiveScale blendColors clamp condition setRange remapValue choice "
    "distanceBetween angleBetween vectorProduct decomposeMatrix composeMatrix multMatrix wtAddMatrix expression "
    "blendShape cluster groupParts polySubdFace";
constexpr std::string_view NODES =
    "a b c a1 a2 x ns:a ns:b |a |a|b a|b b|a |b|aShape aShape persp |persp persp|a time1 "
    ":time1 :initialShadingGroup layerManager rRN dRN |r:a r:x rRNfosterParent1";
constexpr std::string_view PATHS =
    "phl[1] phl[2] phl[3] fp t tx r rx ro s v wm pm[1] m msg iog o i i1x radi jo is bps tg[0].tt tg[1].tw tg ktv[0:2] "
    "ktv[3] kit[1:2] kix[0:2] "
    "tan vt[0:2] fc[0:1] pt[1] n[0:2] ed[0:2] wl[0:1].w wl[0].w[1] dsm uvst[0].uvsn uvst[0].uvsp[0:2] rp it t.tx w[0] "
    "b translate.translateX hsj hee hsv hp pv pvx twi ikb pa mrxe mnrl ps st pi in clst[0].clsp[0:1] iog[0].og[0].gid "
    "ia ib wa wb fgwt bgwt acm ram c1 c2 op ft ocr mn mx vl[0] vl[0:1] ov p1 p2 imat i[0] in[0] out[0] ixp ip[0].ig "
    "og[0] "
    "ma[0] ma[1] pm[0] gm it[0].itg[0].iti[6000].igt it[0].itg[1].iti[5500].ipt it[0].itg[1].iti[5500].ict og ig ic "
    "ics dv en nw w";
// What references name: those of the first file stand in r, and those of that one's in r:d.
constexpr std::string_view REFERRED =
    "|r:a |r:a|r:b r:x |r:gone r:aRN |r:d:a |rRNfosterParent1|a |a r:d:x :persp |r:a|r:a |b";
constexpr std::string_view ENDS_THERE = "|r:a.tx |r:a|r:b.ty r:x.in |r:gone.tx a.tx |r:a.fly r:a.wm r:x.i[2] :time1.o";
constexpr std::string_view EDITED = "translate translateX fly rotateY controlPoints[0:1] visibility in[2] tx";
constexpr std::string_view HOLDERS =
    "rRN.placeHolderList[1] rRN.placeHolderList[2] rRN.placeHolderList[3] r:dRN.placeHolderList[1] xRN.placeHolderList";
constexpr std::string_view REFERENCES = "rRN r:dRN dRN xRN";
constexpr std::string_view ADDED = "a b c d e";
constexpr std::string_view INDICES = "[0] [1] [2] [5] [1:3]";
constexpr std::string_view NUMBERS = "0 1 -1 0.5 1e10 -0 7 1e-7 90 33.3 yes no -0.0 4294967296 1e300";
constexpr std::string_view WORDS = R"("t" on f "a.b" "-k" 0x1 "\n\"q" "" nan mu)";
constexpr std::string_view KINDS =
    "double bool long enum double3 compound message time doubleAngle doubleLinear matrix "
    "fltMatrix string generic int odd";
constexpr std::string_view SELECTED = ":time1 :initialShadingGroup :persp :defaultRenderGlobals a b";
// Lists of flags, each with its value.
constexpr std::string_view MARKS = "-l=on -k=on -k=off -cb=on -l=off -s=3";
constexpr std::string_view ENDS = "-na -f -l=on";
constexpr std::string_view PARENTS = "-add -add -w";

class Writer {
public:
    explicit Writer(std::minstd_rand& random) : random_(random) {}

    std::string statement() {
        const unsigned which = random_() % 16;
        if (which < 4) return node() + ";\n";
        if (which < 8) return setting() + ";\n";
        if (which < 10) return added() + ";\n";
        if (which < 12) return "connectAttr " + plug() + " " + plug() + " " + (chance(2) ? flag(ENDS) : "") + ";\n";
        if (which == 12) return "disconnectAttr " + plug() + " " + plug() + ";\n";
        if (which == 13) return parenting() + ";\n";
        if (which == 15 && chance(2)) return chance(2) ? reference() : edits();
        if (which == 14) return "select -ne " + one(SELECTED) + ";\n";
        return other();
    }

private:
    bool chance(unsigned in) { return random_() % in == 0; }

    std::string one(std::string_view words) {
        const auto count = static_cast<std::size_t>(std::ranges::count(words, ' ')) + 1;
        for (std::size_t skipped = random_() % count; skipped > 0; --skipped) words.remove_prefix(words.find(' ') + 1);
        return std::string(words.substr(0, words.find(' ')));
    }
    std::string quoted(std::string_view words) { return '"' + one(words) + '"'; }
    std::string flag(std::string_view flags) {
        std::string out = one(flags);
        std::ranges::replace(out, '=', ' ');
        return out + " ";
    }

    std::string node() {
        std::string out = "createNode " + one(TYPES);
        if (chance(16)) out += " -s";
        if (!chance(8)) out += " -n " + quoted(NODES);
        if (chance(2)) out += " -p " + quoted(NODES);
        return out;
    }

    std::string part() { return one(ADDED) + (chance(3) ? "" : one(INDICES)); }
    std::string path() {
        if (chance(2)) return one(PATHS);
        std::string out = part();
        while (chance(2)) out += "." + part();
        return out;
    }
    std::string plug() { return '"' + one(NODES) + "." + path() + '"'; }

    std::string setting() {
        std::string out = "setAttr " + (chance(2) ? flag(MARKS) : std::string()) + '"';
        if (chance(5)) out += one(NODES);
        return out + "." + path() + "\" " + value();
    }

    std::string list(const char* type, unsigned count) {
        std::string out = std::string("-type \"") + type + '"';
        for (unsigned i = 0; i < count; ++i) out += " " + one(NUMBERS);
        return out;
    }

    std::string value() {
        const unsigned which = random_() % 12;
        if (which < 3) return one(NUMBERS);
        if (which < 5) return list("double3", 3);
        if (which == 5) return list("double2", 2);
        if (which == 6) return list("matrix", 16);
        if (which == 7) return list("doubleArray", random_() % 5);
        if (which == 8) return "-type \"string\" " + one(WORDS);
        if (which == 9) return R"(-type "polyFaces" f 3 0 1 2 mu 0 3 0 1 2 f 3 0 -2 1)";
        if (which == 10) return R"(-type "string" "playbackOptions -min 2 -max 9 -ast 0 -aet 20")";
        std::string out;
        for (std::size_t count = random_() % 9; count > 0; --count)
            out += (chance(4) ? one(WORDS) : one(NUMBERS)) + " ";
        return out;
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
        return out;
    }

    std::string parenting() {
        std::string out = "parent -s -nc -r ";
        while (chance(2)) out += flag(PARENTS);
        out += quoted(NODES);
        return chance(5) ? out : out + " " + quoted(NODES);
    }

    // The files that an input may hold behind its first.
    std::string reference() {
        const bool deep = chance(3);
        const std::string name = deep ? "d" : "r", file = deep ? "deep.ma" : chance(8) ? "gone.ma" : "rig.ma";
        const std::string names = chance(8) ? "-rpr \"" + name + "\"" : "-ns \"" + name + "\"";
        const std::string rest = names + (chance(6) ? " -dr 1" : "") + " -rfn \"" + name + "RN\" \"" + file + "\";\n";
        return (chance(2) ? "file -rdi 1 " + rest : "") + "file -r " + rest;
    }

    std::string edits() {
        const std::string node = one(REFERENCES);
        std::string out = "createNode reference -n \"" + node + "\"; setAttr \".ed\" -type \"dataReferenceEdits\" \"" +
                          node + "\" " + quoted(REFERENCES) + " ";
        const std::size_t count = random_() % 5;
        out += std::to_string(chance(16) ? count + 1 : count) + " ";
        for (std::size_t i = 0; i < count; ++i) out += edit() + " ";
        return out + ";\n";
    }

    std::string edit() {
        const unsigned which = random_() % 10;
        const std::string node = quoted(REFERRED);
        if (which == 0) return "0 " + node + " " + quoted(REFERRED) + " \"-s -r \"";
        if (which == 1) return "1 " + node + R"( "fly" "fl" " -ci 1 -dv 2 -at \"double\"")";
        if (which < 4) return "2 " + node + " " + quoted(EDITED) + " \" -k 1 " + one(NUMBERS) + "\"";
        if (which == 4) return "3 " + quoted(ENDS_THERE) + " " + quoted(ENDS_THERE) + " \"-na\"";
        if (which == 5) return "4 " + node + " " + quoted(EDITED) + " \"\"";
        if (which == 6) return (chance(2) ? "8 " : "9 ") + node + " " + quoted(EDITED);
        if (which == 7) return "7 \"link\" " + node + " 1 " + node + " 0";
        const std::string ends = "\"rRN\" " + quoted(ENDS_THERE) + " ";
        if (which == 8)
            return "5 0 " + ends + quoted(ENDS_THERE) + " " + quoted(HOLDERS) + " " + quoted(HOLDERS) + " \"\"";
        return (chance(2) ? "5 3 " : "5 4 ") + ends + quoted(HOLDERS) + " \"\"";
    }

    std::string other() {
        const unsigned which = random_() % 4;
        if (which == 0) return "currentUnit -l m -a rad -t ntsc;\n";
        if (which == 1) return "currentUnit -l mm -t pal;\n";
        if (which == 2) return "playbackOptions -min 3 -max 5;\n";
        return "rename -uid \"A-1\";\n";
    }

    std::minstd_rand& random_;
};

std::string scene_statement(std::minstd_rand& random) {
    return Writer(random).statement();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::make_piece = scene_statement;
    return 0;
}
