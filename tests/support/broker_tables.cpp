// The function tables of the recording broker and its objects. Members that are not named stay NULL: those of
// the versions behind 1.0.
#include <gtest/gtest.h>

#include "tests/support/broker_calls.h"

namespace test_support {

namespace {

// Fills the members that this provider has no business calling, whatever their signature.
struct Unexpected {
    template <class Result, class... Arguments>
    using Function = Result (*)(Arguments...);
    template <class Result, class... Arguments>
    using VariadicFunction = Result (*)(Arguments..., ...);

    template <class Result, class... Arguments>
    operator Function<Result, Arguments...>() const {
        return [](Arguments...) -> Result {
            ADD_FAILURE() << "a CMPI function was called that the provider has no use for: "
                          << __PRETTY_FUNCTION__;
            return Result();
        };
    }
};
constexpr Unexpected unexpected;

CMPIString* unexpected_message(const CMPIBroker*, const char*, const char*, CMPIStatus*, CMPICount, ...) {
    ADD_FAILURE() << "getMessage was called";
    return nullptr;
}

} // namespace

CMPIBrokerFT BrokerCalls::broker_table() {
    CMPIBrokerFT table{};
    table.brokerCapabilities = CMPI_MB_BasicRead | CMPI_MB_AssociationTraversal;
    table.brokerVersion = CMPIVersion100;
    table.brokerName = "recording broker";
    table.prepareAttachThread = unexpected;
    table.attachThread = unexpected;
    table.detachThread = unexpected;
    table.deliverIndication = unexpected;
    table.enumerateInstanceNames = unexpected;
    table.getInstance = unexpected;
    table.createInstance = unexpected;
    table.modifyInstance = unexpected;
    table.deleteInstance = unexpected;
    table.execQuery = unexpected;
    table.enumerateInstances = unexpected;
    table.associators = unexpected;
    table.associatorNames = unexpected;
    table.references = unexpected;
    table.referenceNames = unexpected;
    table.invokeMethod = unexpected;
    table.setProperty = unexpected;
    table.getProperty = unexpected;
    return table;
}

CMPIBrokerEncFT BrokerCalls::maker_table() {
    CMPIBrokerEncFT table{};
    table.ftVersion = CMPIVersion100;
    table.newInstance = new_instance;
    table.newObjectPath = new_object_path;
    table.newArgs = unexpected;
    table.newString = new_string;
    table.newArray = unexpected;
    table.newDateTime = unexpected;
    table.newDateTimeFromBinary = unexpected;
    table.newDateTimeFromChars = unexpected;
    table.newSelectExp = unexpected;
    table.classPathIsA = unexpected;
    table.toString = unexpected;
    table.isOfType = unexpected;
    table.getType = unexpected;
    table.getMessage = unexpected_message;
    table.logMessage = unexpected;
    table.trace = unexpected;
    return table;
}

CMPIStringFT BrokerCalls::string_table() {
    CMPIStringFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = release_string;
    table.clone = unexpected;
    table.getCharPtr = get_char_ptr;
    return table;
}

CMPIObjectPathFT BrokerCalls::path_table() {
    CMPIObjectPathFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = release_path;
    table.clone = unexpected;
    table.setNameSpace = set_name_space;
    table.getNameSpace = get_name_space;
    table.setHostname = set_host_name;
    table.getHostname = get_host_name;
    table.setClassName = set_class_name;
    table.getClassName = get_class_name;
    table.addKey = add_key;
    table.getKey = get_key;
    table.getKeyAt = get_key_at;
    table.getKeyCount = get_key_count;
    table.setNameSpaceFromObjectPath = unexpected;
    table.setHostAndNameSpaceFromObjectPath = unexpected;
    table.getClassQualifier = unexpected;
    table.getPropertyQualifier = unexpected;
    table.getMethodQualifier = unexpected;
    table.getParameterQualifier = unexpected;
    table.toString = unexpected;
    return table;
}

CMPIInstanceFT BrokerCalls::instance_table() {
    CMPIInstanceFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = release_instance;
    table.clone = unexpected;
    table.getProperty = unexpected;
    table.getPropertyAt = unexpected;
    table.getPropertyCount = unexpected;
    table.setProperty = set_property;
    table.getObjectPath = unexpected;
    table.setPropertyFilter = set_property_filter;
    table.setObjectPath = unexpected;
    return table;
}

CMPIResultFT BrokerCalls::result_table() {
    CMPIResultFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = unexpected;
    table.clone = unexpected;
    table.returnData = unexpected;
    table.returnInstance = return_instance;
    table.returnObjectPath = return_object_path;
    table.returnDone = return_done;
    return table;
}

const CMPIBrokerFT BrokerCalls::brokerTable = BrokerCalls::broker_table();
const CMPIBrokerEncFT BrokerCalls::makerTable = BrokerCalls::maker_table();
const CMPIStringFT BrokerCalls::stringTable = BrokerCalls::string_table();
const CMPIObjectPathFT BrokerCalls::pathTable = BrokerCalls::path_table();
const CMPIInstanceFT BrokerCalls::instanceTable = BrokerCalls::instance_table();
const CMPIResultFT BrokerCalls::resultTable = BrokerCalls::result_table();

} // namespace test_support
