// A small model of one diagnostic: what node, mark and engine must hold after any sequence of passes, engine
// changes and edits. It shares no code with the bridge.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace quill::test {

class DiagModel {
  public:
    virtual ~DiagModel() = default;
    virtual void engineMoves(const std::string& number) = 0;
    virtual void publish() = 0;
    virtual void apply() = 0;
    // What the engine, the mark and the node hold.
    virtual std::string state() const = 0;

    void userEdits(const std::string& text) {
        node_ = text;
        exists_ = true;
    }

  protected:
    void makeNode(bool with_help) {
        has_help_ = has_help_ || (with_help && !exists_);
        exists_ = true;
    }
    std::string described(const std::string& engine, const std::string& mark) const {
        return "engine " + engine + ", mark " + mark + ", node " + node_.value_or("nothing") +
               (has_help_ ? ", help" : "");
    }

    std::optional<std::string> node_;

  private:
    bool exists_ = false;
    bool has_help_ = false;
};

struct IntegerRange {
    int bits;
    bool is_signed;

    long long cut(long long value) const {
        if (bits == 64) return value;
        const long long low = value & ((1LL << bits) - 1);
        return is_signed && low >> (bits - 1) != 0 ? low - (1LL << bits) : low;
    }
};

class IntegerModel : public DiagModel {
  public:
    // engine: what the engine holds; edit: what an applying pass reads and compares.
    IntegerModel(IntegerRange engine, IntegerRange edit, bool is_enum)
        : engine_range_(engine), edit_range_(edit), is_enum_(is_enum) {}

    void engineMoves(const std::string& number) override { engine_ = engine_range_.cut(std::stoll(number)); }

    void publish() override {
        makeNode(true);
        if (!is_enum_ && mark_ == engine_) return;
        node_ = std::to_string(engine_) + (is_enum_ ? " - no label" : "");
        mark_ = engine_;
    }

    void apply() override {
        makeNode(false);
        const long long wanted = node_ ? read(*node_) : 0;
        const long long mark = mark_ ? read(std::to_string(*mark_)) : 0;
        if (wanted == mark || edit_range_.cut(engine_) != mark) return;
        engine_ = engine_range_.cut(wanted);
        mark_ = wanted;
    }

    std::string state() const override {
        return described(std::to_string(engine_), mark_ ? std::to_string(*mark_) : "nothing");
    }

  private:
    // The number in front of a text, the nearest that fits.
    long long read(const std::string& text) const {
        const long long highest = edit_range_.bits == 64 ? INT64_MAX : (1LL << (edit_range_.bits - 1)) - 1;
        return std::clamp(std::strtoll(text.c_str(), nullptr, 10), -highest - 1, highest);
    }

    IntegerRange engine_range_;
    IntegerRange edit_range_;
    bool is_enum_;
    long long engine_ = 0;
    std::optional<long long> mark_;
};

// Both zeros are equal here. Whether a node that holds one takes the other is decided by the tree.
class FloatModel : public DiagModel {
  public:
    static std::string text(float number) {
        if (std::isnan(number)) return "nan";
        if (number == 0) return "0.000000";
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%f", static_cast<double>(number));
        return buffer;
    }
    static float value(const std::string& number) { return std::strtof(number.c_str(), nullptr); }

    void engineMoves(const std::string& number) override { engine_ = value(number); }

    void publish() override {
        makeNode(true);
        if (mark_ && *mark_ == engine_) return;
        node_ = text(engine_);
        mark_ = engine_;
    }

    void apply() override {
        makeNode(false);
        const float wanted = node_ ? value(*node_) : 0.0f;
        const float mark = mark_.value_or(0.0f);
        if (wanted == mark || !(engine_ == mark)) return;
        engine_ = wanted;
        mark_ = wanted;
    }

    std::string state() const override { return described(text(engine_), mark_ ? text(*mark_) : "nothing"); }

  private:
    float engine_ = 0;
    std::optional<float> mark_;
};

}  // namespace quill::test
