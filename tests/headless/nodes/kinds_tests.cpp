#include "tests/headless/animation/network.h"

#include <iterator>
#include <numbers>
#include <sstream>

namespace headless {
namespace {

using std::numbers::pi;

// The names that the host's files write, long and short.
TEST(NodeKinds, attributes_go_by_the_names_of_the_host) {
    const struct {
        const char *kinds, *names;
    } cases[] = {
        {"animLayer",
         "mute mt parentMute pmte solo sl siblingSolo sslo childrenSolo chsl childsoloed csol outMute omte "
         "override ovrd passthrough pthg weight wgth parentWeight pwth foregroundWeight fgwt "
         "backgroundWeight bgwt rotationAccumulationMode ram outRotationAccumulationMode oram "
         "scaleAccumulationMode sam blendNodes bnds childrenLayers cdly parentLayer play"},
        {"animBlendNodeAdditive animBlendNodeAdditiveDA animBlendNodeAdditiveDL animBlendNodeAdditiveF "
         "animBlendNodeAdditiveFA animBlendNodeAdditiveFL animBlendNodeAdditiveI16 animBlendNodeAdditiveI32 "
         "animBlendNodeBoolean animBlendNodeEnum animBlendNodeTime animBlendNodeAdditiveScale "
         "animBlendNodeAdditiveRotation",
         "inputA ia inputB ib weightA wa weightB wb output o destinationPlug dp"},
        {"animBlendNodeAdditiveRotation animBlendNodeAdditiveScale", "accumulationMode acm"},
        {"animBlendNodeAdditiveRotation", "inputAX iax inputBZ ibz outputY oy rotateOrder ro rotationInterpolation ri"},
        {"expression", "internalExpression ixp input in output out time tim frame frm objectMsg obm animated ani"},
        {"condition", "firstTerm ft secondTerm st operation op colorIfTrueR ctr colorIfFalseG cfg outColorB ocb"},
        {"blendColors", "blender b color1R c1r color2G c2g outputB opb"},
        {"clamp", "minR mnr maxG mxg inputB ipb outputR opr"},
        {"setRange", "valueX vx minY ny maxZ mz oldMinX onx oldMaxY omy outValueZ oz"},
        {"multiplyDivide", "operation op input1X i1x input2Y i2y outputZ oz"},
        {"plusMinusAverage", "operation op input1D i1 input2D i2 input3D i3 input3Dx i3x output1D o1 output2Dy o2y "
                             "output3Dz o3z"},
        {"multDoubleLinear addDoubleLinear", "input1 i1 input2 i2 output o"},
        {"blendTwoAttr", "attributesBlender ab input i output o current c"},
        {"blendWeighted", "input i weight w output o current c"},
        {"unitConversion", "input i conversionFactor cf output o"},
        {"reverse", "inputX ix outputZ oz"},
        {"remapValue", "inputValue i inputMin imn inputMax imx outputMin omn outputMax omx value vl value_Position vlp "
                       "value_FloatValue vlfv value_Interp vli outValue ov outColorR ocr"},
        {"choice", "selector s input i output o"},
        {"distanceBetween", "point1X p1x inMatrix1 im1 point2Z p2z inMatrix2 im2 distance d"},
        {"distanceDimShape", "startPointX spx endPointY epy distance dist"},
        {"angleBetween", "vector1X v1x vector2Z v2z axis ax angle a eulerY euy"},
        {"vectorProduct", "operation op input1X i1x input2Y i2y matrix m normalizeOutput no outputZ oz"},
        {"pointMatrixMult", "inPointX ipx inMatrix im vectorMultiply vm outputY oy"},
        {"decomposeMatrix", "inputMatrix imat inputRotateOrder ro outputTranslateX otx outputRotateY ory outputScaleZ "
                            "osz outputShearX oshx outputQuatW oqw"},
        {"composeMatrix", "inputTranslateX itx inputRotateY iry inputRotateOrder ro inputScaleZ isz inputShearX ishx "
                          "inputQuatW iqw useEulerRotation uer outputMatrix omat"},
        {"multMatrix addMatrix", "matrixIn i matrixSum o"},
        {"wtAddMatrix", "wtMatrix i matrixIn m weightIn w matrixSum o"},
        {"inverseMatrix transposeMatrix", "inputMatrix imat outputMatrix omat"},
        {"holdMatrix passMatrix", "inMatrix i outMatrix o"},
        {"fourByFourMatrix", "in00 i00 in23 i23 output o"},
        {"eulerToQuat", "inputRotate irt inputRotateX irx inputRotateOrder ro outputQuatX oqx"},
        {"quatToEuler", "inputQuatW iqw inputRotateOrder iro outputRotate ort outputRotateZ orz"},
        {"axisAngleToQuat", "inputAxisX iax inputAngle iang outputQuatW oqw"},
        {"quatToAxisAngle", "inputQuatX iqx outputAxisY oay outputAngle oang"},
        {"quatProd quatAdd quatSub quatSlerp", "input1QuatX iq1x input2QuatW iq2w outputQuatZ oqz"},
        {"quatInvert quatConjugate quatNormalize quatNegate", "inputQuatX iqx outputQuatW oqw"},
        {"character", "linearValues lv angularValues av unitlessValues uv timeValues tv"},
    };
    const auto words = [](const char* text) {
        std::istringstream in(text);
        return std::vector<std::string>(std::istream_iterator<std::string>(in), {});
    };
    for (const auto& [kinds, names] : cases) {
        for (const std::string& kind : words(kinds)) {
            const NodeType* type = NodeTypes::all().find(kind);
            ASSERT_TRUE(type && type->known()) << kind;
            const std::vector<std::string> pairs = words(names);
            for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
                const AttributeId id = type->find(pairs[i]);
                ASSERT_NE(id, no_attribute) << kind << "." << pairs[i];
                EXPECT_EQ(id, type->find(pairs[i + 1])) << kind << "." << pairs[i];
            }
        }
    }
}

class NodeValues : public Network {
protected:
    struct Input {
        const char* attribute;
        Value value;
    };
    // Makes a node, sets its inputs and compares an output, component by component.
    void expect(const char* kind, const std::vector<Input>& inputs, const char* output,
                const std::vector<double>& expected) {
        Node& node = **scene.create_node(kind);
        for (const auto& [attribute, value] : inputs) set(node.name() + "." + attribute, value);
        const Value value = scene.evaluate(*scene.find_plug(node.name() + "." + output));
        std::string told = std::string(kind) + "." + output + " after";
        for (const auto& [attribute, set] : inputs) told += std::string(" ") + attribute;
        std::vector<double> found{value.number()};
        if (const auto* triple = value.get_if<Vector3>()) found = {triple->x, triple->y, triple->z};
        if (const auto* many = value.get_if<Value::Doubles>()) found = *many;
        if (const auto* matrix = value.get_if<Matrix>()) found.assign(&matrix->m[0][0], &matrix->m[0][0] + 16);
        ASSERT_EQ(found.size(), expected.size()) << told;
        for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], 1e-9) << told << " at " << i;
    }

    static Matrix moved(double x, double y, double z) {
        Matrix out;
        out.set_row(3, {x, y, z});
        return out;
    }
    static Matrix scaled(double by) {
        Matrix out;
        for (int i = 0; i < 3; ++i) out.m[i][i] = by;
        return out;
    }
};

TEST_F(NodeValues, numbers_follow_their_closed_forms) {
    const Vector3 low{0, 1, 2}, high{1, 2, 4};
    expect("clamp", {{"mn", low}, {"mx", high}, {"ip", Vector3{-3, 1.5, 9}}}, "op", {0, 1.5, 4});
    expect("reverse", {{"i", Vector3{0, .25, 3}}}, "o", {1, .75, -2});
    expect("setRange",
           {{"v", Vector3{5, -1, 7}},
            {"n", Vector3{1, 0, 3}},
            {"m", Vector3{3, 1, 9}},
            {"on", Vector3{4, 0, 7}},
            {"om", Vector3{8, 1, 7}}},
           "o", {1.5, 0, 3});
    expect("blendColors", {}, "op", {.5, 0, .5});
    expect("blendColors", {{"b", .25}, {"c1", Vector3{4, 8, 0}}, {"c2", Vector3{0, 4, 8}}}, "op", {1, 5, 6});
    expect("blendTwoAttr", {{"i[0]", 2.0}, {"i[1]", 10.0}, {"ab", .25}}, "o", {4});
    const bool holds[6][3] = {{0, 1, 0}, {1, 0, 1}, {0, 0, 1}, {0, 1, 1}, {1, 0, 0}, {1, 1, 0}};
    for (int operation = 0; operation < 6; ++operation) {
        for (int i = 0; i < 3; ++i)
            expect("condition", {{"op", operation}, {"ft", i + 1.0}, {"st", 2.0}, {"ct", Vector3{7, 8, 9}}}, "ocg",
                   {holds[operation][i] ? 8.0 : 1.0});
    }
    expect("condition", {{"ft", .1 + .2}, {"st", .3}, {"ct", Vector3{5, 5, 5}}}, "ocr", {5});
    expect("remapValue", {{"i", 15.0}, {"imn", 10.0}, {"imx", 20.0}, {"omn", 100.0}, {"omx", 200.0}}, "ov", {150});
    expect("remapValue",
           {{"i", .75},
            {"vl[0].vlp", .5},
            {"vl[0].vlfv", 1.0},
            {"vl[0].vli", 1},
            {"vl[1].vlp", 1.0},
            {"vl[1].vlfv", 3.0},
            {"vl[1].vli", 1}},
           "ov", {2});
    expect("remapValue", {{"i", .75}, {"vl[0].vlp", .5}, {"vl[0].vlfv", 1.0}, {"vl[1].vlp", 1.0}, {"vl[1].vlfv", 3.0}},
           "ov", {1});
}

TEST_F(NodeValues, points_and_directions_follow_their_closed_forms) {
    const Vector3 a{1, 2, 2}, b{0, 3, 4};
    expect("distanceBetween", {{"p1", a}, {"p2", b}, {"im2", moved(1, -1, 0)}}, "d", {2});
    expect("distanceDimShape", {{"sp", a}, {"ep", Vector3{1, 5, 6}}}, "dist", {5});
    expect("angleBetween", {}, "a", {pi / 2});
    expect("angleBetween", {}, "ax", {1, 0, 0});
    expect("angleBetween", {}, "eu", {pi / 2, 0, 0});
    expect("angleBetween", {{"v1", Vector3{2, 0, 0}}, {"v2", Vector3{3, 3, 0}}}, "eu", {0, 0, pi / 4});
    const double products[5][3] = {{1, 2, 2}, {14, 14, 14}, {2, -4, 3}, {2, 4, 4}, {7, 4, 4}};
    for (int operation = 0; operation < 5; ++operation) {
        Matrix by = scaled(2);
        by.set_row(3, {5, 0, 0});
        expect("vectorProduct", {{"op", operation}, {"i1", a}, {"i2", b}, {"m", by}}, "o",
               {products[operation][0], products[operation][1], products[operation][2]});
    }
    expect("vectorProduct", {{"op", 0}, {"i1", a}, {"no", true}}, "o", {1. / 3, 2. / 3, 2. / 3});
    expect("vectorProduct", {{"i1", a}, {"i2", b}, {"no", true}}, "ox", {14. / 15});
    expect("pointMatrixMult", {{"ip", a}, {"im", moved(5, 6, 7)}}, "o", {6, 8, 9});
    expect("pointMatrixMult", {{"ip", a}, {"im", moved(5, 6, 7)}, {"vm", true}}, "o", {1, 2, 2});
}

TEST_F(NodeValues, matrices_follow_their_closed_forms) {
    const std::vector<double> one_two{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1};
    expect("multMatrix", {{"i[0]", scaled(2)}, {"i[3]", moved(1, 2, 3)}}, "o", one_two);
    expect("composeMatrix", {{"it", Vector3{1, 2, 3}}, {"is", Vector3{2, 2, 2}}}, "omat", one_two);
    // A quarter turn about z after one about x, told as angles and as a quaternion.
    const std::vector<double> turned{0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 1};
    expect("composeMatrix", {{"ir", Vector3{pi / 2, 0, pi / 2}}}, "omat", turned);
    expect("composeMatrix", {{"uer", false}, {"iq", Value::Doubles{.5, .5, .5, .5}}}, "omat", turned);
    expect("composeMatrix", {{"ir", Vector3{pi / 2, pi / 2, 0}}, {"ro", 4}}, "omat",
           {0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 1});
    Matrix all = scaled(3);
    std::swap(all.m[0][0], all.m[0][1]);
    all.m[1][0] = -3, all.m[1][1] = 0;
    all.set_row(3, {7, 8, 9});
    expect("decomposeMatrix", {{"imat", all}}, "ot", {7, 8, 9});
    expect("decomposeMatrix", {{"imat", all}}, "or", {0, 0, pi / 2});
    expect("decomposeMatrix", {{"imat", all}}, "os", {3, 3, 3});
    expect("decomposeMatrix", {{"imat", all}}, "oq", {0, 0, std::sqrt(.5), std::sqrt(.5)});
    expect("addMatrix", {{"i[0]", scaled(2)}, {"i[1]", moved(1, 2, 3)}}, "o",
           {3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3, 0, 1, 2, 3, 2});
    expect("wtAddMatrix", {{"i[0].m", moved(4, 0, 0)}, {"i[0].w", .25}, {"i[2].m", moved(0, 8, 0)}, {"i[2].w", .75}},
           "o", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 6, 0, 1});
    expect("inverseMatrix", {{"imat", moved(1, 2, 3)}}, "omat", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -1, -2, -3, 1});
    expect("transposeMatrix", {{"imat", moved(1, 2, 3)}}, "omat", {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1});
    expect("holdMatrix", {{"i", moved(1, 2, 3)}}, "o", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1});
    expect("passMatrix", {{"i", scaled(3)}}, "o", {6, 0, 0, 0, 0, 6, 0, 0, 0, 0, 6, 0, 0, 0, 0, 2});
    expect("fourByFourMatrix", {{"i30", 5.0}, {"i01", 2.0}}, "o", {1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1});
}

TEST_F(NodeValues, quaternions_follow_their_closed_forms) {
    const double h = std::sqrt(.5);
    const Value about_x = Value::Doubles{h, 0, 0, h}, about_z = Value::Doubles{0, 0, h, h};
    expect("quatProd", {{"iq1", about_x}, {"iq2", about_z}}, "oq", {.5, .5, .5, .5});
    expect("quatProd", {{"iq1", about_z}, {"iq2", about_x}}, "oq", {.5, -.5, .5, .5});
    expect("quatAdd", {{"iq1", about_x}, {"iq2", about_z}}, "oq", {h, 0, h, 2 * h});
    expect("quatSub", {{"iq1", about_x}, {"iq2", about_z}}, "oq", {h, 0, -h, 0});
    expect("quatConjugate", {{"iq", about_x}}, "oq", {-h, 0, 0, h});
    expect("quatNegate", {{"iq", about_x}}, "oq", {-h, 0, 0, -h});
    expect("quatInvert", {{"iq", Value::Doubles{0, 0, 0, 2}}}, "oq", {0, 0, 0, .5});
    expect("quatNormalize", {{"iq", Value::Doubles{0, 3, 0, 4}}}, "oq", {0, .6, 0, .8});
    expect("quatSlerp", {{"iq2", about_x}, {"t", 1. / 3}}, "oq", {std::sin(pi / 12), 0, 0, std::cos(pi / 12)});
    expect("eulerToQuat", {{"irt", Vector3{pi / 2, 0, pi / 2}}}, "oq", {.5, .5, .5, .5});
    expect("eulerToQuat", {{"irt", Vector3{pi / 2, 0, pi / 2}}, {"ro", 5}}, "oq", {.5, -.5, .5, .5});
    expect("quatToEuler", {{"iq", Value::Doubles{0, .6, 0, .8}}}, "ort", {0, 2 * std::atan2(.6, .8), 0});
    expect("axisAngleToQuat", {{"ia", Vector3{0, 0, 5}}, {"iang", pi / 2}}, "oq", {0, 0, h, h});
    expect("quatToAxisAngle", {{"iq", about_z}}, "oa", {0, 0, 1});
    expect("quatToAxisAngle", {{"iq", about_z}}, "oang", {pi / 2});
}

// What is chosen, or passes through a character, arrives whole.
TEST_F(NodeValues, passages_give_matrices_triples_and_numbers_on) {
    for (const char* name : {"a", "b", "follows"}) make("transform", name);
    make("choice", "matrix");
    make("choice", "place");
    make("decomposeMatrix", "taken");
    for (const auto& [from, to] : {std::pair{"a.wm[0]", "matrix.i[0]"},
                                   {"b.wm[0]", "matrix.i[1]"},
                                   {"matrix.o", "taken.imat"},
                                   {"a.t", "place.i[0]"},
                                   {"b.t", "place.i[1]"},
                                   {"place.o", "follows.t"}})
        connect(from, to);
    set("a.t", Vector3{1, 2, 3});
    set("b.t", Vector3{4, 5, 6});
    for (const int which : {0, 1}) {
        set("matrix.s", which);
        set("place.s", which);
        const Vector3 expected = which == 0 ? Vector3{1, 2, 3} : Vector3{4, 5, 6};
        expect_near(vector("taken.ot"), expected);
        expect_near(vector("follows.t"), expected);
        expect_near(world("follows").translation(), expected);
    }
    make("character", "set");
    for (const auto& [from, to] : {std::pair{"set.uv[3]", "follows.sx"}, {"set.lv[1]", "b.tx"}, {"set.av[1]", "b.rz"}})
        connect(from, to);
    set("set.uv[3]", 2.5);
    animate("set.lv[1]", {0, 1}, {0, 8});
    animate("set.av[1]", {0, 1}, {0, .8});
    scene.set_current_time(.25);
    EXPECT_EQ(number("follows.sx"), 2.5);
    EXPECT_EQ(number("b.tx"), 2);
    EXPECT_NEAR(number("b.rz"), .2, 1e-12);
    EXPECT_TRUE(unevaluated().empty());
}

} // namespace
} // namespace headless
