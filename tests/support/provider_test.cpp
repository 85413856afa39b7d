#include "tests/support/provider_test.h"

#include <algorithm>

#include "provider/provider.h"

namespace test_support {

namespace {

// A property list as the operations take it: pointers that end with NULL, or NULL itself.
class CList {
  public:
    explicit CList(const PropertyList& list) : given_(list.has_value()) {
        if (!given_) return;
        for (const std::string& text : *list) {
            pointers_.push_back(text.c_str());
        }
        pointers_.push_back(nullptr);
    }
    const char** get() { return given_ ? pointers_.data() : nullptr; }

  private:
    bool given_;
    std::vector<const char*> pointers_;
};

} // namespace

void ProviderTest::SetUp() {
    emulator::reset();
    CMPIStatus status{CMPI_RC_OK, nullptr};
    instanceMi = FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, &status);
    associationMi = FCIPProvider_Create_AssociationMI(broker.cmpi(), nullptr, &status);
    ASSERT_NE(instanceMi, nullptr);
    ASSERT_NE(associationMi, nullptr);
    emulator::clear_calls();
    broker.clear_calls();
}

void ProviderTest::TearDown() {
    EXPECT_FALSE(emulator::lock_held()) << "the provider left the platform's lock taken";
    EXPECT_EQ(emulator::misuse_count(), 0U) << emulator::misuse_report();
    EXPECT_EQ(emulator::messages_outstanding(), 0U) << "a message was not dropped";
    emulator::release_messages();
}

ProviderTest::Recording::Recording(ProviderTest& owner)
    : test(owner),
      result(owner.broker),
      brokerCallsBefore(owner.broker.calls().size()),
      platformCallsBefore(emulator::calls().size()) {}

Answer ProviderTest::Recording::finish(CMPIStatus status) {
    Answer answer;
    answer.output = capture.text();
    EXPECT_FALSE(emulator::lock_held()) << "the operation returned with the platform's lock taken";

    const std::vector<Call> brokerCalls = test.broker.calls();
    answer.brokerCalls.assign(brokerCalls.begin() + static_cast<std::ptrdiff_t>(brokerCallsBefore),
                              brokerCalls.end());
    const std::vector<std::string> platformCalls = emulator::calls();
    answer.platformCalls.assign(platformCalls.begin() + static_cast<std::ptrdiff_t>(platformCallsBefore),
                                platformCalls.end());
    answer.rc = status.rc;
    if (status.msg != nullptr) answer.message = status.msg->ft->getCharPtr(status.msg, nullptr);
    answer.instances = result.instances();
    answer.paths = result.paths();
    answer.returned = result.returned();
    answer.doneCalls = result.done_calls();
    return answer;
}

Answer ProviderTest::enumerate_names(const std::string& className) {
    const CMPIObjectPath* op = broker.path(nameSpace, className);
    return operate([&](const CMPIResult* result) {
        return instanceMi->ft->enumerateInstanceNames(instanceMi, nullptr, result, op);
    });
}

Answer ProviderTest::enumerate(const std::string& className, const PropertyList& properties) {
    const CMPIObjectPath* op = broker.path(nameSpace, className);
    CList list(properties);
    return operate([&](const CMPIResult* result) {
        return instanceMi->ft->enumerateInstances(instanceMi, nullptr, result, op, list.get());
    });
}

Answer ProviderTest::get_instance(const std::string& className, const std::vector<Key>& keys,
                                  const PropertyList& properties) {
    const CMPIObjectPath* op = broker.path(nameSpace, className, keys);
    CList list(properties);
    return operate([&](const CMPIResult* result) {
        return instanceMi->ft->getInstance(instanceMi, nullptr, result, op, list.get());
    });
}

Answer ProviderTest::associators(const std::string& className, const std::vector<Key>& keys,
                                 const char* assocClass, const PropertyList& properties,
                                 const char* resultClass, const char* role, const char* resultRole) {
    const CMPIObjectPath* op = broker.path(nameSpace, className, keys);
    CList list(properties);
    return operate([&](const CMPIResult* result) {
        return associationMi->ft->associators(associationMi, nullptr, result, op, assocClass, resultClass,
                                              role, resultRole, list.get());
    });
}

Answer ProviderTest::associator_names(const std::string& className, const std::vector<Key>& keys,
                                      const char* assocClass, const char* resultClass, const char* role,
                                      const char* resultRole) {
    const CMPIObjectPath* op = broker.path(nameSpace, className, keys);
    return operate([&](const CMPIResult* result) {
        return associationMi->ft->associatorNames(associationMi, nullptr, result, op, assocClass, resultClass,
                                                  role, resultRole);
    });
}

Answer ProviderTest::references(const std::string& className, const std::vector<Key>& keys,
                                const char* resultClass, const PropertyList& properties, const char* role) {
    const CMPIObjectPath* op = broker.path(nameSpace, className, keys);
    CList list(properties);
    return operate([&](const CMPIResult* result) {
        return associationMi->ft->references(associationMi, nullptr, result, op, resultClass, role,
                                             list.get());
    });
}

Answer ProviderTest::reference_names(const std::string& className, const std::vector<Key>& keys,
                                     const char* resultClass, const char* role) {
    const CMPIObjectPath* op = broker.path(nameSpace, className, keys);
    return operate([&](const CMPIResult* result) {
        return associationMi->ft->referenceNames(associationMi, nullptr, result, op, resultClass, role);
    });
}

std::size_t ProviderTest::at_least_one(std::size_t failures) {
    EXPECT_GE(failures, 1U) << "the call that should fail was never made";
    return failures;
}

std::vector<std::string> functions_called(const std::vector<Call>& calls, bool locked) {
    std::vector<std::string> functions;
    for (const Call& call : calls) {
        if (call.locked != locked) continue;
        const std::string function = call.function();
        if (std::find(functions.begin(), functions.end(), function) == functions.end()) {
            functions.push_back(function);
        }
    }
    return functions;
}

} // namespace test_support
