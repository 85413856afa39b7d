// What is expected of every row of the associator members, whether it returns paths or instances. The two
// suites differ in their tables, in what tells a returned object apart, and in what can fail below a row.
#ifndef KESTO_TESTS_ASSOC_ASSOCIATOR_SUITE_H
#define KESTO_TESTS_ASSOC_ASSOCIATOR_SUITE_H

#include <algorithm>
#include <string>
#include <vector>

#include "tests/assoc/association_test.h"
#include "tests/assoc/associator_rows.h"

namespace golden {

// A failure of the platform, and the ends that cannot be built when it happens.
struct PlatformFailure {
    const char* symbol;
    const char* where;
    std::vector<emulator::Effect> effects;
    std::vector<End> breaks;

    bool breaks_end(End end) const { return std::find(breaks.begin(), breaks.end(), end) != breaks.end(); }
};

// The rows whose key names a tunnel, and those whose key is a port's if-index.
template <typename Row>
std::vector<Row> tunnel_rows(const std::vector<Row>& rows) {
    std::vector<Row> found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
                 [](const Row& row) { return row.mode != 0; });
    return found;
}
template <typename Row>
std::vector<Row> port_rows(const std::vector<Row>& rows) {
    std::vector<Row> found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
                 [](const Row& row) { return row.mode == 0; });
    return found;
}

template <typename Row>
class AssociatorSuite : public AssociationTest, public testing::WithParamInterface<Row> {
  protected:
    using Answer = test_support::Answer;
    using Texts = std::vector<std::string>;

    const Row& row() const { return this->GetParam(); }
    std::string function() const { return row().member->name; }
    bool returns_paths() const { return std::is_same_v<Row, AssociatorNamesRow>; }

    Answer ask(const std::string& key, const std::string& associationClass) {
        return call(row().member->function, key.c_str(), associationClass.c_str());
    }
    // A request that finds its tunnel or port.
    Answer ask_hit(const std::string& associationClass) { return ask(hit_key(), associationClass); }
    Answer ask_hit() { return ask_hit(row().tested); }
    std::string hit_key() const { return row().mode == 0 ? GIGABIT_PORT_TEXT : hit_of(row().mode).key; }

    Texts expected(const std::vector<FarEnd>& ends, const Tunnel& tunnel) const {
        Texts texts;
        for (const FarEnd& far : ends) {
            texts.push_back(returns_paths() ? path(far.end, far.className, tunnel).text()
                                            : instance(far.end, far.className, tunnel));
        }
        return texts;
    }
    Texts expected_of_port(std::uint32_t ifIndex) const {
        Texts texts;
        for (const FarEnd& far : row().far) {
            texts.push_back(returns_paths() ? port_path(far.end, far.className, ifIndex).text()
                                            : port_instance(far.end, far.className, ifIndex));
        }
        return texts;
    }
    Texts expected_of_hit(const std::vector<FarEnd>& ends) const {
        if (ends.empty()) return {};
        return row().mode == 0 ? expected_of_port(GIGABIT_PORT)
                               : expected(ends, *hit_of(row().mode).tunnel[row().mode]);
    }
    Texts expected_of_hit() const { return expected_of_hit(row().far); }

    // What was returned, told apart by the ends that it should be.
    Texts returned(const Answer& answer, const std::vector<FarEnd>& ends) const {
        Texts texts;
        for (std::size_t at = 0; at < answer.returned.size(); ++at) {
            if (returns_paths() && at < answer.paths.size()) {
                texts.push_back(answer.paths[at].text());
            } else if (!returns_paths() && at < answer.instances.size() && at < ends.size()) {
                texts.push_back(identity(ends[at].end, answer.instances[at]));
            } else {
                texts.push_back(testing::PrintToString(answer.returned[at]));
            }
        }
        return texts;
    }
    Texts returned(const Answer& answer) const { return returned(answer, row().far); }

    std::vector<FarEnd> without(const std::vector<FarEnd>& ends, std::size_t at) const {
        std::vector<FarEnd> left = ends;
        if (at < left.size()) left.erase(left.begin() + static_cast<std::ptrdiff_t>(at));
        return left;
    }
    std::vector<FarEnd> left_by(const PlatformFailure& failure) const {
        std::vector<FarEnd> left;
        for (const FarEnd& far : row().far)
            if (!failure.breaks_end(far.end)) left.push_back(far);
        return left;
    }

    std::string own_trace(const Answer& answer) const { return trace_of(answer.output, function()); }
    std::string whole_trace() const { return entering(function()) + exiting(function()); }

    // ---- What every row shows.

    void each_key_names_its_tunnel() {
        for (const Probe& probe : PROBES) {
            SCOPED_TRACE(std::string("key \"") + probe.key + "\"");
            const Tunnel* tunnel = probe.tunnel[row().mode];
            const Answer answer = ask(probe.key, row().tested);
            EXPECT_EQ(returned(answer), tunnel == nullptr ? Texts{} : expected(row().far, *tunnel));
            EXPECT_EQ(status, 0);
            EXPECT_EQ(own_trace(answer), whole_trace());
            EXPECT_EQ(answer.doneCalls, 0U);
        }
    }

    void letter_case_does_not_matter() {
        for (const std::string& spelled :
             {in_mixed_case(row().tested), in_mixed_case("x" + std::string(row().tested)).substr(1)}) {
            SCOPED_TRACE(spelled);
            EXPECT_EQ(returned(ask_hit(spelled)), expected_of_hit());
        }
    }

    void a_failed_lookup_returns_nothing() {
        for (const emulator::Effect effect : ROW_FAILURES) {
            SCOPED_TRACE("effect " + std::to_string(static_cast<int>(effect)));
            emulator::clear_faults();
            emulator::add_fault(fault("fcip_get_link_entry", effect));
            const Answer answer = ask_hit();
            EXPECT_EQ(returned(answer), Texts{});
            EXPECT_EQ(status, 0);
            EXPECT_EQ(own_trace(answer), whole_trace());
        }
    }

    void an_object_that_the_broker_cannot_make_is_skipped(test_support::Make what) {
        for_each_broker_failure(what, test_support::Failure::Null, [&](std::size_t nth) {
            const Answer answer = ask_hit();
            const std::vector<FarEnd> left = broker.fault_hit() ? without(row().far, nth - 1) : row().far;
            EXPECT_EQ(returned(answer, left), expected_of_hit(left));
            EXPECT_EQ(status, 0);
            EXPECT_EQ(own_trace(answer), whole_trace());
        });
    }

    void an_end_that_the_platform_fails_is_skipped(const std::vector<PlatformFailure>& failures) {
        std::size_t tried = 0;
        for (const PlatformFailure& failure : failures) {
            const std::vector<FarEnd> left = left_by(failure);
            if (left.size() == row().far.size()) continue; // not below this row
            for (const emulator::Effect effect : failure.effects) {
                if (effect == emulator::Effect::FailWithRow && takes_the_block_whatever_the_status(failure))
                    continue;
                SCOPED_TRACE(std::string(failure.symbol) + " effect " +
                             std::to_string(static_cast<int>(effect)));
                emulator::clear_faults(); // the platform makes some of the expected objects itself
                const Texts wanted = expected_of_hit(left);
                emulator::add_fault(fault(failure.symbol, effect, failure.where));
                const Answer answer = ask_hit();
                EXPECT_EQ(returned(answer, left), wanted);
                EXPECT_EQ(status, 0);
                EXPECT_EQ(own_trace(answer), whole_trace());
                ++tried;
            }
        }
        EXPECT_GT(tried, 0U) << "no platform service stands below this row";
    }

    // Nothing but objects is returned, and the member comes to its end.
    void each_call_may_fail_on_its_own() {
        for_each_failing_call([&] { return ask_hit(); },
                              [&](const Answer& answer) {
                                  for (const test_support::Returned& object : answer.returned) {
                                      EXPECT_TRUE(object.path.is_valid() && object.instance.is_valid())
                                          << testing::PrintToString(object);
                                  }
                                  EXPECT_EQ(status, 0);
                                  EXPECT_EQ(own_trace(answer), whole_trace());
                              });
    }

  private:
    // The IP endpoint's members use the port block of IPEthernetEndpoint without a look at the status.
    bool takes_the_block_whatever_the_status(const PlatformFailure& failure) const {
        return row().mode == 2 && std::string(failure.symbol) == "pm_cim_get_port_info";
    }
};

// "fcip_pe_KESTO_FCIPTCPEndpoint" and the like, for the names of parameterised tests.
struct RowName {
    template <typename Row>
    std::string operator()(const testing::TestParamInfo<Row>& info) const {
        return row_name(info.param);
    }
};
struct MemberName {
    template <typename Member>
    std::string operator()(const testing::TestParamInfo<Member>& info) const {
        return info.param.source;
    }
};

} // namespace golden

#endif
