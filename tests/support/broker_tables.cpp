// The function tables of the recording broker and its objects. Members that are not named stay NULL: those of
// the versions after 1.0.
#include <gtest/gtest.h>

#include "tests/support/broker_calls.h"

namespace test_support {

namespace {

// Fills the members that this provider has no business calling, whatever their signature.
struct Unexpected {
    template <typename Result, typename... Arguments>
    using Function = Result (*)(Arguments...);
    template <typename Result, typename... Arguments>
    using VariadicFunction = Result (*)(Arguments..., ...);

    template <typename Result, typename... Arguments>
    operator Function<Result, Arguments...>() const {
        return [](Arguments...) -> Result {
            ADD_FAILURE() << "a CMPI function was called that the provider has no use for: "
                          << __PRETTY_FUNCTION__;
            return Result();
        };
    }
};
constexpr Unexpected UNEXPECTED;

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
    table.prepareAttachThread = UNEXPECTED;
    table.attachThread = UNEXPECTED;
    table.detachThread = UNEXPECTED;
    table.deliverIndication = UNEXPECTED;
    table.enumerateInstanceNames = UNEXPECTED;
    table.getInstance = UNEXPECTED;
    table.createInstance = UNEXPECTED;
    table.modifyInstance = UNEXPECTED;
    table.deleteInstance = UNEXPECTED;
    table.execQuery = UNEXPECTED;
    table.enumerateInstances = UNEXPECTED;
    table.associators = UNEXPECTED;
    table.associatorNames = UNEXPECTED;
    table.references = UNEXPECTED;
    table.referenceNames = UNEXPECTED;
    table.invokeMethod = UNEXPECTED;
    table.setProperty = UNEXPECTED;
    table.getProperty = UNEXPECTED;
    return table;
}

CMPIBrokerEncFT BrokerCalls::maker_table() {
    CMPIBrokerEncFT table{};
    table.ftVersion = CMPIVersion100;
    table.newInstance = new_instance;
    table.newObjectPath = new_object_path;
    table.newArgs = UNEXPECTED;
    table.newString = new_string;
    table.newArray = UNEXPECTED;
    table.newDateTime = UNEXPECTED;
    table.newDateTimeFromBinary = UNEXPECTED;
    table.newDateTimeFromChars = UNEXPECTED;
    table.newSelectExp = UNEXPECTED;
    table.classPathIsA = UNEXPECTED;
    table.toString = UNEXPECTED;
    table.isOfType = UNEXPECTED;
    table.getType = UNEXPECTED;
    table.getMessage = unexpected_message;
    table.logMessage = UNEXPECTED;
    table.trace = UNEXPECTED;
    return table;
}

CMPIStringFT BrokerCalls::string_table() {
    CMPIStringFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = release_string;
    table.clone = UNEXPECTED;
    table.getCharPtr = get_char_ptr;
    return table;
}

CMPIObjectPathFT BrokerCalls::path_table() {
    CMPIObjectPathFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = release_path;
    table.clone = UNEXPECTED;
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
    table.setNameSpaceFromObjectPath = UNEXPECTED;
    table.setHostAndNameSpaceFromObjectPath = UNEXPECTED;
    table.getClassQualifier = UNEXPECTED;
    table.getPropertyQualifier = UNEXPECTED;
    table.getMethodQualifier = UNEXPECTED;
    table.getParameterQualifier = UNEXPECTED;
    table.toString = UNEXPECTED;
    return table;
}

CMPIInstanceFT BrokerCalls::instance_table() {
    CMPIInstanceFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = release_instance;
    table.clone = UNEXPECTED;
    table.getProperty = UNEXPECTED;
    table.getPropertyAt = UNEXPECTED;
    table.getPropertyCount = UNEXPECTED;
    table.setProperty = set_property;
    table.getObjectPath = UNEXPECTED;
    table.setPropertyFilter = set_property_filter;
    table.setObjectPath = UNEXPECTED;
    return table;
}

CMPIResultFT BrokerCalls::result_table() {
    CMPIResultFT table{};
    table.ftVersion = CMPIVersion100;
    table.release = UNEXPECTED;
    table.clone = UNEXPECTED;
    table.returnData = UNEXPECTED;
    table.returnInstance = return_instance;
    table.returnObjectPath = return_object_path;
    table.returnDone = return_done;
    return table;
}

const CMPIBrokerFT BrokerCalls::BROKER_TABLE = BrokerCalls::broker_table();
const CMPIBrokerEncFT BrokerCalls::MAKER_TABLE = BrokerCalls::maker_table();
const CMPIStringFT BrokerCalls::STRING_TABLE = BrokerCalls::string_table();
const CMPIObjectPathFT BrokerCalls::PATH_TABLE = BrokerCalls::path_table();
const CMPIInstanceFT BrokerCalls::INSTANCE_TABLE = BrokerCalls::instance_table();
const CMPIResultFT BrokerCalls::RESULT_TABLE = BrokerCalls::result_table();

} // namespace test_support
