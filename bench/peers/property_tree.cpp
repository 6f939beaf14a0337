// The property tree beside documents of boost::property_tree and nlohmann::json. These have neither locks nor
// listeners nor metadata: what they are asked for is what they share with ours.
#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "bench/peers/areas.h"
#include "bench/stub_engine/stub_engine.h"
#include "common/property_node.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/diags/publish.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace peers {
namespace {

namespace se = quill::media::se_wrapper;
using boost::property_tree::ptree;
using nlohmann::json;

constexpr int kValue = 1234;
constexpr size_t kStride = 7919;  // a prime: paths are asked for out of order

ptree::path_type boostPath(const std::string& path) {
    return {path, '/'};
}

json::json_pointer jsonPointer(const std::string& path) {
    return json::json_pointer("/" + path);
}

// The same diagnostics in a tree of each kind.
struct Trees {
    explicit Trees(int count) {
        bench::fillStubCatalogue(static_cast<size_t>(count), 1);
        bench::stubEngine().value = kValue;
        se::readSignalEssenceDiags(root);
        watch(*root);
        for (int i = 0; i < count; ++i) {
            paths.push_back(se::getDiagPropertyName(i));
            pointers.push_back(jsonPointer(paths.back()));
            boost.put(boostPath(paths.back()), kValue);
            document[pointers.back()] = kValue;
        }
    }

    // Counts what our nodes tell of.
    void watch(quill::PropertyNode& node) {
        node.addListener([this](quill::PropertyNode&, const quill::PropertyChangeInfo&) { ++changes; });
        for (const quill::PropertyNodePtr& child : node.children()) watch(*child);
    }

    // The next index, out of order.
    size_t next() { return at = (at + kStride) % paths.size(); }

    std::vector<std::string> paths;
    std::vector<json::json_pointer> pointers;
    const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
    ptree boost;
    json document;
    int changes = 0;
    size_t at = 0;
};

// `is_right` looks at what the call left.
template <class Call, class IsRight>
Contestant checked(const std::string& name, Role role, const Call& call, const IsRight& is_right) {
    const auto error = [call, is_right] {
        call();
        return is_right() ? 0.0 : 1.0;
    };
    return {name, role, bench::repeated(call), error};
}

void set(Session& session, int count) {
    Trees t(count);
    const std::string& path = t.paths[t.paths.size() / 2];
    const quill::PropertyNodePtr node = t.root->getNode(path, false);
    ptree& boost = t.boost.get_child(boostPath(path));
    json& member = t.document[jsonPointer(path)];
    session.hold({"set of an unchanged scalar, node in hand",
                  "diagnostics",
                  count,
                  {"cycles a call", false},
                  1,
                  {
                      checked(
                          "ours, set<int>", Role::ours, [&] { node->set<int>(kValue); },
                          [&] { return t.changes == 0 && node->get<int>() == kValue; }),
                      checked(
                          "Boost, put_value", Role::peer, [&] { boost.put_value(kValue); },
                          [&] { return boost.get_value<int>() == kValue; }),
                      checked(
                          "nlohmann, assignment", Role::peer, [&] { member = kValue; },
                          [&] { return member == kValue; }),
                      checked(
                          "nlohmann, assignment if unequal", Role::peer,
                          [&] {
                              if (member != kValue) member = kValue;
                          },
                          [&] { return member == kValue; }),
                  },
                  "",
                  true});
}

void lookUp(Session& session, int count) {
    Trees t(count);
    const void* found = nullptr;
    const auto is_found = [&] { return found != nullptr; };
    session.hold({"look-up of a path of three components",
                  "diagnostics",
                  count,
                  {"cycles a call", false},
                  1,
                  {
                      checked(
                          "ours, getNode", Role::ours,
                          [&] { found = t.root->getNode(t.paths[t.next()], false).get(); }, is_found),
                      checked(
                          "Boost, get_child", Role::peer,
                          [&] { found = &t.boost.get_child(boostPath(t.paths[t.next()])); }, is_found),
                      checked(
                          "nlohmann, pointer from text", Role::peer,
                          [&] { found = &t.document.at(jsonPointer(t.paths[t.next()])); }, is_found),
                      checked(
                          "nlohmann, pointer in hand", Role::peer,
                          [&] { found = &t.document.at(t.pointers[t.next()]); }, is_found),
                  },
                  "",
                  true});
}

// What a host would write with the other trees: the path, the node, the value where it differs.
template <class Publish>
void eachDiag(const Publish& publish) {
    for (int i = 0; i < se::SEDiagGetNumDiags(); ++i)
        publish(se::getDiagPropertyName(i), se::SEDiagGetInt32(i));
}

void pass(Session& session, int count) {
    Trees t(count);
    const auto boost_pass = [&] {
        eachDiag([&](const std::string& path, int value) {
            ptree& node = t.boost.get_child(boostPath(path));
            if (node.get_value<int>() != value) node.put_value(value);
        });
    };
    const auto json_pass = [&] {
        eachDiag([&](const std::string& path, int value) {
            json& node = t.document.at(jsonPointer(path));
            if (node != value) node = value;
        });
    };
    session.hold(
        {"publishing pass over unchanged scalars",
         "diagnostics",
         count,
         {"cycles a diagnostic", false},
         static_cast<double>(count),
         {
             checked(
                 "ours, readSignalEssenceDiags", Role::ours, [&] { se::readSignalEssenceDiags(t.root); },
                 [&] {
                     const auto is_published = [&](const std::string& path) {
                         return t.root->getNode(path, false)->get<int>() == kValue;
                     };
                     return t.changes == 0 && std::all_of(t.paths.begin(), t.paths.end(), is_published);
                 }),
             checked("Boost", Role::peer, boost_pass,
                     [&] { return t.boost.get<int>(boostPath(t.paths.back())) == kValue; }),
             checked("nlohmann", Role::peer, json_pass,
                     [&] { return t.document.at(t.pointers.back()) == kValue; }),
         },
         "",
         true});
}

}  // namespace

void propertyTree(Session& session) {
    bench::fillInterfaceTable();
    const std::vector<int> counts =
        session.quick() ? std::vector<int>{100, 1000} : std::vector<int>{100, 1000, 10'000, 100'000};
    set(session, 1000);
    for (const int count : counts) lookUp(session, count);
    for (const int count : counts) pass(session, count);
}

}  // namespace peers
