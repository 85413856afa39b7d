// What is expected of every row of the reference members. The names members and the instances members take
// the same rows; an instance is compared by its path and its properties, which are the keys of the name.
#ifndef KESTO_TESTS_ASSOC_REFERENCE_SUITE_H
#define KESTO_TESTS_ASSOC_REFERENCE_SUITE_H

#include <algorithm>
#include <string>
#include <vector>

#include "tests/assoc/association_test.h"
#include "tests/assoc/reference_rows.h"

namespace golden {

enum class Form { Names, Instances };

// The keys or properties of each association returned, as one path; NULL and -1 as they are.
inline std::vector<test_support::RecordedPath> associations_of(const test_support::Answer& answer) {
    using test_support::RecordedPath;
    std::vector<RecordedPath> found;
    for (const test_support::Returned& returned : answer.returned) {
        if (returned.kind == test_support::Returned::Kind::Path) {
            found.push_back(returned.path);
        } else if (returned.instance.is_valid()) {
            const RecordedPath& path = returned.instance.path();
            EXPECT_TRUE(path.keys().empty());
            found.emplace_back(path.name_space(), path.class_name(), returned.instance.sets(), path.host());
        } else {
            found.push_back(RecordedPath::of(returned.instance.kind()));
        }
    }
    return found;
}

template <Form form>
class ReferenceMembers : public AssociationTest {
  protected:
    using Answer = test_support::Answer;
    using Paths = std::vector<test_support::RecordedPath>;

    static std::string function_of(const ReferenceMember& member) {
        return std::string("get_") + member.source +
               (form == Form::Names ? "_reference_names" : "_references");
    }
    Answer ask(const ReferenceMember& member, const std::string& key, const char* associationClass) {
        return form == Form::Names ? call(member.names, key.c_str(), associationClass)
                                   : call(member.references, key.c_str(), associationClass);
    }
    // The instances must be made by returnInstance and the names by returnObjectPath.
    static void expect_form(const Answer& answer) {
        EXPECT_EQ(form == Form::Names ? answer.instances.size() : answer.paths.size(), 0U);
    }
};

template <Form form>
class ReferenceRowSuite : public ReferenceMembers<form>, public testing::WithParamInterface<ReferenceRow> {
  protected:
    using Base = ReferenceMembers<form>;
    using typename Base::Answer;
    using typename Base::Paths;

    const ReferenceRow& row() const { return this->GetParam(); }
    std::string function() const { return Base::function_of(*row().member); }
    Answer ask(const std::string& key, const std::string& associationClass) {
        Answer answer = Base::ask(*row().member, key, associationClass.c_str());
        Base::expect_form(answer);
        return answer;
    }
    std::string hit_key() const { return row().mode == 0 ? GIGABIT_PORT_TEXT : hit_of(row().mode).key; }
    Answer ask_hit() { return ask(hit_key(), row().tested); }
    Paths expected_of_hit(const std::string& asked) const {
        return {row().mode == 0 ? expected_for_port(row(), asked, GIGABIT_PORT)
                                : expected(row(), asked, *hit_of(row().mode).tunnel[row().mode], hit_key())};
    }

    std::string opening_trace(const std::string& asked) const {
        return entering(function()) + result_line(row().member->line, asked);
    }
    std::string whole_trace(const std::string& asked) const {
        return opening_trace(asked) + exiting(function());
    }

    bool has_end(End end) const { return row().first.end == end || row().second.end == end; }
    bool makes_an_end_from_the_key() const {
        return row().first.from == From::Key || row().second.from == From::Key;
    }
    // The one function that does not look whether its ends were made.
    bool does_not_test_its_ends() const { return function() == "get_ip_settings_references"; }
    // The one function that makes the association before it looks at its ends.
    bool makes_the_association_first() const { return function() == "get_fcip_remote_pe_reference_names"; }

    void expect_missing_end(const Answer& answer) const {
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(this->status, -1);
        EXPECT_EQ(trace_of(answer.output, function()), opening_trace(row().tested));
    }
    void expect_nothing(const Answer& answer) const {
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(this->status, 0);
        EXPECT_EQ(trace_of(answer.output, function()).rfind(opening_trace(row().tested), 0), 0U)
            << answer.output;
    }

    // ---- What every row shows.

    void each_key_names_its_tunnel() {
        for (const Probe& probe : PROBES) {
            SCOPED_TRACE(std::string("key \"") + probe.key + "\"");
            const Tunnel* tunnel = probe.tunnel[row().mode];
            const Answer answer = ask(probe.key, row().tested);
            if (tunnel == nullptr) {
                expect_nothing(answer);
            } else if (makes_an_end_from_the_key() && probe.key[0] != '7') {
                expect_missing_end(answer); // the key's number, read from its first character, is no port
            } else {
                EXPECT_EQ(associations_of(answer), Paths{expected(row(), row().tested, *tunnel, probe.key)});
                EXPECT_EQ(this->status, 0);
                EXPECT_EQ(trace_of(answer.output, function()), whole_trace(row().tested));
            }
            EXPECT_EQ(answer.doneCalls, 0U);
        }
    }

    void the_association_is_named_as_the_row_says() {
        const std::string asked = in_mixed_case(row().tested);
        const Answer answer = ask(hit_key(), asked);
        EXPECT_EQ(associations_of(answer), expected_of_hit(asked));
        EXPECT_EQ(trace_of(answer.output, function()), whole_trace(asked));
    }

    void a_failed_lookup_returns_nothing() {
        for (const emulator::Effect effect : ROW_FAILURES) {
            SCOPED_TRACE("effect " + std::to_string(static_cast<int>(effect)));
            emulator::clear_faults();
            emulator::add_fault(fault("fcip_get_link_entry", effect, "op=2"));
            expect_nothing(ask_hit());
        }
    }

    // The first two paths made are the ends, the third is the association.
    void a_path_that_the_broker_cannot_make() {
        const std::size_t failures = this->for_each_broker_failure(
            test_support::Make::ObjectPath, test_support::Failure::Null, [&](std::size_t nth) {
                this->broker.clear_calls();
                const Answer answer = ask_hit();
                if (!this->broker.fault_hit()) {
                    EXPECT_EQ(associations_of(answer), expected_of_hit(row().tested));
                } else if (nth > 2 || does_not_test_its_ends()) {
                    expect_no_valid_object(answer);
                    EXPECT_EQ(this->status, 0);
                    EXPECT_EQ(trace_of(answer.output, function()), whole_trace(row().tested));
                } else {
                    expect_missing_end(answer);
                    EXPECT_EQ(ends_released(), ends_made()) << "an end that was made must be released";
                }
            });
        EXPECT_EQ(failures, 3U);
    }

    void a_hit_releases_nothing() {
        this->broker.clear_calls();
        ask_hit();
        EXPECT_EQ(this->broker.call_texts("releaseObjectPath"), std::vector<std::string>{});
    }

    void ends_fail_with_their_profile() {
        for (const emulator::Effect effect : STATUS_FAILURES) {
            emulator::clear_faults();
            emulator::add_fault(fault("fcip_get_entity_entry", effect));
            expect_missing_end(ask_hit());
        }
    }

    // The member gives its association, or nothing, or a missing end.
    void each_call_may_fail_on_its_own() {
        for_each_failing_call([&] { return ask_hit(); },
                              [&](const Answer& answer) {
                                  EXPECT_LE(answer.returned.size(), 1U);
                                  EXPECT_TRUE(this->status == 0 || this->status == -1) << this->status;
                                  if (this->status == -1) expect_missing_end(answer);
                                  if (does_not_test_its_ends()) return;
                                  for (const test_support::RecordedPath& made : associations_of(answer))
                                      EXPECT_TRUE(made.is_valid()) << made;
                              });
    }

    static void expect_no_valid_object(const Answer& answer) {
        for (const test_support::RecordedPath& returned : associations_of(answer))
            EXPECT_EQ(returned.kind(), test_support::Object::Null);
    }

  private:
    // Paths of ends, by the calls that made and released them: all that are not of the association's class.
    std::size_t of_ends(const char* function) const {
        const std::vector<std::string> calls = this->broker.call_texts(function);
        const std::string association = std::string(" ") + (row().name != OWN ? row().name : row().tested);
        return static_cast<std::size_t>(
            std::count_if(calls.begin(), calls.end(), [&](const std::string& text) {
                return text.size() < association.size() ||
                       text.compare(text.size() - association.size(), association.size(), association) != 0;
            }));
    }
    std::size_t ends_made() const { return of_ends("newObjectPath") - 1; } // one was asked for and not made
    std::size_t ends_released() const { return of_ends("releaseObjectPath"); }
};

// Row lists for the instantiations.
template <typename Predicate>
std::vector<ReferenceRow> reference_rows_that(Predicate predicate) {
    std::vector<ReferenceRow> found;
    std::copy_if(REFERENCE_ROWS.begin(), REFERENCE_ROWS.end(), std::back_inserter(found), predicate);
    return found;
}
inline bool looks_a_tunnel_up(const ReferenceRow& row) {
    return row.mode != 0;
}
inline bool is_of_a_port(const ReferenceRow& row) {
    return row.mode == 0;
}
inline bool has_hosting_system(const ReferenceRow& row) {
    return row.first.end == End::HostingSystem || row.second.end == End::HostingSystem;
}
// Ends that are made of a tunnel need its profile; those of ports and systems do not.
inline bool needs_profile(const ReferenceRow& row) {
    const auto needs = [](End end) {
        return end != End::HostingSystem && end != End::FcPort && end != End::EthernetPort &&
               end != End::LanEndpoint && end != End::EthernetStatistics;
    };
    return needs(row.first.end) || needs(row.second.end);
}

struct ReferenceRowName {
    std::string operator()(const testing::TestParamInfo<ReferenceRow>& info) const {
        return row_name(info.param);
    }
};
struct ReferenceMemberName {
    std::string operator()(const testing::TestParamInfo<ReferenceMember>& info) const {
        return info.param.source;
    }
};

// ---- What every member shows.

template <Form form>
class ReferenceMemberSuite : public ReferenceMembers<form>,
                             public testing::WithParamInterface<ReferenceMember> {
  protected:
    using Base = ReferenceMembers<form>;
    using typename Base::Answer;

    std::string function() const { return Base::function_of(this->GetParam()); }

    void without_an_association_class_returns_nothing() {
        for (const char* key : {"7_anything", "0_10.0.0.7", "0_7", GIGABIT_PORT_TEXT}) {
            const Answer answer = Base::ask(this->GetParam(), key, nullptr);
            expect_no_object(answer);
            EXPECT_EQ(this->status, 0);
            EXPECT_EQ(answer.output.rfind(entering(function()), 0), 0U) << answer.output;
            EXPECT_EQ(answer.platformCalls, (std::vector<std::string>{"mutex_lock", "mutex_unlock"}));
        }
    }

    void an_unknown_association_class_returns_nothing() {
        for (const char* asked : {"KESTO_NoSuchAssociation", "", "KESTO_FCIPElementSettingDat"}) {
            SCOPED_TRACE(asked);
            const Answer answer = Base::ask(this->GetParam(), "7_anything", asked);
            expect_no_object(answer);
            EXPECT_EQ(this->status, 0);
            EXPECT_EQ(trace_of(answer.output, function()),
                      entering(function()) + result_line(this->GetParam().line, asked) + exiting(function()));
            EXPECT_EQ(answer.platformCalls, (std::vector<std::string>{"mutex_lock", "mutex_unlock"}));
        }
    }
};

} // namespace golden

#endif
