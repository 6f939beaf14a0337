// The property tree compared with documents of boost::property_tree and nlohmann::json. These have no locks,
// listeners or metadata. The operations are those that all have.
#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/stub_engine/stub_engine.h"
#include "common/property_node.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/diags/publish.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace routines_vs_libraries {
namespace {

namespace se = quill::media::se_wrapper;
using boost::property_tree::ptree;
using nlohmann::json;

constexpr int kValue = 1234;
constexpr size_t kStride = 7919;  // a prime: paths are used out of order

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

    // Counts the notifications of our nodes.
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

// `is_right` checks the result of the call.
template <class Call, class IsRight>
Contestant checked(const std::string& name, Role role, const Call& call, const IsRight& is_right) {
    const auto error = [call, is_right] {
        call();
        return is_right() ? 0.0 : 1.0;
    };
    return {name, role, timing::repeated(call), error};
}

// A table of the cost of `work` in cycles and allocations.
void hold(Session& session, const std::string& subject, int count, const char* unit, double work,
          std::vector<Contestant> contestants) {
    Contest contest{subject, "diagnostics", count, {unit, false}, work, std::move(contestants)};
    contest.count_allocations = true;
    session.hold(contest);
}

void set(Session& session, int count) {
    Trees t(count);
    const std::string& path = t.paths[t.paths.size() / 2];
    const quill::PropertyNodePtr node = t.root->getNode(path, false);
    ptree& boost = t.boost.get_child(boostPath(path));
    json& member = t.document[jsonPointer(path)];

    const auto set_ours = [&] { node->set<int>(kValue); };
    const auto set_boost = [&] { boost.put_value(kValue); };
    const auto assign = [&] { member = kValue; };
    const auto assign_if_unequal = [&] {
        if (member != kValue) member = kValue;
    };
    const auto ours_stands = [&] { return t.changes == 0 && node->get<int>() == kValue; };
    const auto boost_stands = [&] { return boost.get_value<int>() == kValue; };
    const auto member_stands = [&] { return member == kValue; };
    hold(session, "set of an unchanged scalar, node in hand", count, "cycles a call", 1,
         {
             checked("ours, PropertyNode::set", Role::ours, set_ours, ours_stands),
             checked("Boost, put_value", Role::peer, set_boost, boost_stands),
             checked("nlohmann, assignment", Role::peer, assign, member_stands),
             checked("nlohmann, assignment if unequal", Role::peer, assign_if_unequal, member_stands),
         });
}

void lookUp(Session& session, int count) {
    Trees t(count);
    quill::PropertyNode* node = nullptr;
    const ptree* boost = nullptr;
    const json* member = nullptr;

    const auto find_ours = [&] { node = t.root->getNode(t.paths[t.next()], false).get(); };
    const auto find_boost = [&] { boost = &t.boost.get_child(boostPath(t.paths[t.next()])); };
    const auto find_by_text = [&] { member = &t.document.at(jsonPointer(t.paths[t.next()])); };
    const auto find_by_pointer = [&] { member = &t.document.at(t.pointers[t.next()]); };
    const auto ours_is_found = [&] { return node->getFullName() == t.paths[t.at]; };
    const auto boost_is_found = [&] { return boost->get_value<int>() == kValue; };
    const auto member_is_found = [&] { return member == &t.document.at(t.pointers[t.at]); };
    hold(session, "look-up of a path of three components", count, "cycles a call", 1,
         {
             checked("ours, getNode", Role::ours, find_ours, ours_is_found),
             checked("Boost, get_child", Role::peer, find_boost, boost_is_found),
             checked("nlohmann, pointer from text", Role::peer, find_by_text, member_is_found),
             checked("nlohmann, pointer in hand", Role::peer, find_by_pointer, member_is_found),
         });
}

// A host's code with the other trees: path, node, and a write where the value differs.
template <class Publish>
void eachDiag(const Publish& publish) {
    for (int i = 0; i < se::SEDiagGetNumDiags(); ++i) {
        publish(se::getDiagPropertyName(i), se::SEDiagGetInt32(i));
    }
}

void pass(Session& session, int count) {
    Trees t(count);
    const auto publish_ours = [&] { se::readSignalEssenceDiags(t.root); };
    const auto publish_boost = [&] {
        eachDiag([&](const std::string& path, int value) {
            ptree& node = t.boost.get_child(boostPath(path));
            if (node.get_value<int>() != value) node.put_value(value);
        });
    };
    const auto publish_members = [&] {
        eachDiag([&](const std::string& path, int value) {
            json& node = t.document.at(jsonPointer(path));
            if (node != value) node = value;
        });
    };
    const auto ours_stands = [&] {
        const auto stands = [&](const std::string& path) {
            return t.root->getNode(path, false)->get<int>() == kValue;
        };
        return t.changes == 0 && std::all_of(t.paths.begin(), t.paths.end(), stands);
    };
    const auto boost_stands = [&] { return t.boost.get<int>(boostPath(t.paths.back())) == kValue; };
    const auto members_stand = [&] { return t.document.at(t.pointers.back()) == kValue; };
    hold(session, "publishing pass over unchanged scalars", count, "cycles a diagnostic",
         static_cast<double>(count),
         {
             checked("ours, readSignalEssenceDiags", Role::ours, publish_ours, ours_stands),
             checked("Boost", Role::peer, publish_boost, boost_stands),
             checked("nlohmann", Role::peer, publish_members, members_stand),
         });
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

}  // namespace routines_vs_libraries
