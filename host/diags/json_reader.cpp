#include "host/diags/json_reader.h"

#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/output/one_line.h"

namespace se_host {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kDeepest = 16;  // of nested objects and arrays; a tuning has 4

// An object or array that has begun and not ended.
struct Open {
    Json value;
    std::string name;  // of the member that comes next
    std::unordered_set<std::string> names;
};

class Reader : public nlohmann::json_sax<Json> {
  public:
    Json take() { return std::move(root_); }

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(Json::number_integer_t value) override { return add(value); }
    bool number_unsigned(Json::number_unsigned_t value) override { return add(value); }
    bool number_float(Json::number_float_t value, const std::string&) override { return add(value); }
    bool string(std::string& value) override { return add(std::move(value)); }
    bool binary(Json::binary_t&) override { return false; }

    bool start_object(size_t) override { return open(Json::object()); }
    bool start_array(size_t) override { return open(Json::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(std::string& name) override {
        if (!open_.back().names.insert(name).second) {
            throw std::runtime_error("'" + se_output::oneLine(name) + "' is in it twice");
        }
        open_.back().name = std::move(name);
        return true;
    }

    bool parse_error(size_t, const std::string&, const nlohmann::detail::exception&) override {
        throw std::runtime_error("it is not JSON");
    }

  private:
    bool open(Json value) {
        if (open_.size() == kDeepest) throw std::runtime_error("it is nested too deep");
        open_.push_back({std::move(value), {}, {}});
        return true;
    }

    bool close() {
        Json value = std::move(open_.back().value);
        open_.pop_back();
        return add(std::move(value));
    }

    bool add(Json value) {
        if (open_.empty()) {
            root_ = std::move(value);
        } else if (Open& into = open_.back(); into.value.is_array()) {
            into.value.push_back(std::move(value));
        } else {
            append(into.value, into.name, std::move(value));
        }
        return true;
    }

    Json root_;
    std::vector<Open> open_;
};

}  // namespace

Json readJson(std::string_view text) {
    Reader reader;
    Json::sax_parse(text.begin(), text.end(), &reader);
    return reader.take();
}

void append(Json& object, const std::string& name, Json value) {
    object.get_ref<Json::object_t&>().emplace_back(name, std::move(value));
}

}  // namespace se_host
