// The parameters of one operation, taken out by name and checked.
#ifndef KESTO_SERVER_CIMXML_OPERATION_PARAMETERS_H
#define KESTO_SERVER_CIMXML_OPERATION_PARAMETERS_H

#include <cmpidt.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/cimxml/reader.h"
#include "server/model/cim_model.h"
#include "server/model/request.h"

namespace cimserver {

// Every function throws CimError (CIM_ERR_INVALID_PARAMETER) for a parameter that is missing, occurs twice or
// is of the wrong kind. A NULL parameter is the same as none.
class OperationParameters {
  public:
    explicit OperationParameters(std::vector<Parameter> parameters);

    // A boolean that adds to the flags of the call when it is true.
    bool flag(std::string_view name, bool byDefault, CMPIFlags whenTrue = 0);
    bool is_given(std::string_view name) const;
    CMPIFlags flags() const { return flags_; }

    std::optional<std::string> optional_text(std::string_view name);
    std::string text(std::string_view name);
    std::optional<std::uint32_t> optional_number(std::string_view name);
    std::uint32_t number(std::string_view name);
    std::optional<std::string> optional_class_name(std::string_view name);
    std::string class_name(std::string_view name);
    ObjectPath instance_name(std::string_view name);
    // The name of an instance or of a class.
    struct ObjectName {
        ObjectPath path;
        bool ofClass;
    };
    ObjectName object_name(std::string_view name);
    Instance instance(std::string_view name);
    PropertyNames property_list();

    // All parameters that the operation has are taken; whatever is left it does not have.
    void expect_no_more() const;

  private:
    ParameterValue take(std::string_view name);

    std::vector<Parameter> parameters_;
    CMPIFlags flags_ = 0;
};

} // namespace cimserver

#endif
