// The expression node: statements of the script language over inputs and the clock. Its text is taken apart once, and
// all of its outputs come from one run a step of time.
#include "headless/script/expression.h"
#include "headless/graph/scene.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <cmath>

namespace headless {
namespace {

using enum AttributeKind;

struct ExpressionAttributes {
    AttributeId text, input, output, time, frame;

    static const ExpressionAttributes& ids() {
        static const ExpressionAttributes ids = [] {
            const NodeType& type = *NodeTypes::all().find("expression");
            return ExpressionAttributes{type.find("ixp"), type.find("in"), type.find("out"), type.find("tim"),
                                        type.find("frm")};
        }();
        return ids;
    }
};

// Keeps what was made of the node's text, and what it last gave. All values stay the node's own.
class ExpressionData : public NodeData {
public:
    bool set(const Plug&, const Value&) override { return false; }
    bool get(const Plug&, Value&) const override { return false; }
    bool indices(const Plug&, std::vector<int>&) const override { return false; }

    Expression& expression_of(const Node& node) {
        const std::string text = node.get(PlugKey{ExpressionAttributes::ids().text, 0, {}}).text();
        if (!expression_ || text != text_) {
            expression_ = std::make_unique<Expression>(text);
            text_ = text;
            generation_ = 0;
        }
        return *expression_;
    }

    // Null where the run failed, which is reported.
    const std::vector<double>* outputs(EvaluationContext& context, Node& node) {
        Expression& expression = expression_of(node);
        if (!expression.shortfall().empty() || running_) return nullptr;
        if (generation_ != context.scene().generation()) run(expression, context, node);
        return outputs_ ? &*outputs_ : nullptr;
    }

private:
    void run(Expression& expression, EvaluationContext& context, Node& node) {
        const std::uint64_t generation = context.scene().generation();
        outputs_.reset();
        generation_ = generation;
        if (expression.exhausted()) return;
        const ExpressionAttributes& ids = ExpressionAttributes::ids();
        const Plug clock = node.plug(ids.frame);
        const double time = context.number(node.source_of(clock.key) ? clock : node.plug(ids.time));
        running_ = true;
        std::vector<double> inputs;
        for (const int index : expression.inputs())
            inputs.push_back(context.number(node.plug(ids.input).element(index)));
        running_ = false;
        Result<std::vector<double>> out = expression.run(time, frame_at(context.scene(), time), inputs);
        if (out)
            outputs_ = std::move(*out);
        else
            context.scene().report_evaluation_error("Expression '" + node.name() + "': " + out.error().text());
    }

    // The host counts time in ticks, so a frame is whole there where rounding would leave it just beside.
    static double frame_at(const Scene& scene, double time) {
        const double frame = scene.time_unit.from_seconds(time);
        const double whole = std::round(frame);
        return std::abs(frame - whole) < 1e-6 ? whole : frame;
    }

    std::string text_;
    std::unique_ptr<Expression> expression_;
    std::optional<std::vector<double>> outputs_;
    std::uint64_t generation_ = 0;
    bool running_ = false;
};

ExpressionData& data_of(const Node& node) {
    return static_cast<ExpressionData&>(*node.data());
}

Value compute_output(EvaluationContext& context, Node& node, const Plug& plug) {
    const std::vector<double>* outputs = data_of(node).outputs(context, node);
    const auto index = static_cast<std::size_t>(plug.key.index[0]);
    if (!outputs || plug.key.attribute != ExpressionAttributes::ids().output) return node.get(plug.key);
    return index < outputs->size() ? (*outputs)[index] : 0.0;
}

std::string why_not(const Node& node) {
    ExpressionData& data = data_of(node);
    Expression& expression = data.expression_of(node);
    if (!expression.shortfall().empty()) return expression.shortfall();
    for (const auto& [source, destination] : node.outputs()) {
        if (source.attribute == ExpressionAttributes::ids().output && !expression.always_gives(source.index[0]))
            return "it doesn't always set its output " + std::to_string(source.index[0]);
    }
    if (!expression.loops()) return {};
    EvaluationContext context(node.scene());
    data.outputs(context, *node.scene().find(node.handle()));
    return expression.exhausted() ? "it takes too much work" : "";
}

} // namespace

void add_expression_kind(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "expression", "node", MFn::kExpression)
        .number("input", "in").array()
        .number("output", "out").array().output()
        .text("expression", "e")
        .text("internalExpression", "ixp")
        .time("time", "tim")
        .time("frame", "frm")
        .enumeration("animated", "ani", 1)
        .enumeration("unitOption", "uno")
        .message("objectMsg", "obm")
        .keeps([](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<ExpressionData>(); })
        .computes(compute_output)
        .falls_short(why_not);
    // clang-format on
}

} // namespace headless
