#include "tests/server/probe/associations.h"

#include <cmpidt.h>
#include <cmpift.h>
#include <strings.h>

namespace probe {

namespace {

CMPIObjectPath* part() {
    return new_path("Probe_Piece", "InstanceID", "p");
}

CMPIObjectPath* link(const char* className, const char* role1, CMPIObjectPath* end1, const char* role2,
                     CMPIObjectPath* end2) {
    CMPIObjectPath* path = new_path(className);
    CMPIValue end{};
    end.ref = end1;
    path->ft->addKey(path, role1, &end, CMPI_ref);
    end.ref = end2;
    path->ft->addKey(path, role2, &end, CMPI_ref);
    return path;
}

bool asks_for(const char* asked, const char* className) {
    return asked != nullptr && strcasecmp(asked, className) == 0;
}

// The far end of an association class as the provider sees it from the source; NULL for none.
CMPIObjectPath* far_end(const CMPIObjectPath* source, const char* association) {
    if (association == nullptr) return nullptr;
    const bool isOne = is_a(source, "Probe_Thing") && key_of(source, "Name") == "one";
    const bool isTwo = is_a(source, "Probe_Thing") && key_of(source, "Name") == "two";
    if (asks_for(association, "Probe_Link") || asks_for(association, "Probe_Twin")) {
        // Another spelling of the class: it is the same class all the same.
        if (isOne) {
            return new_path(asks_for(association, "Probe_Twin") ? "PROBE_THING" : "Probe_Thing", "Name",
                            "two");
        }
        return isTwo ? thing("one") : nullptr;
    }
    if (asks_for(association, "Probe_Part")) {
        if (isOne) return part();
        return is_a(source, "Probe_Piece") ? thing("one") : nullptr;
    }
    if (asks_for(association, "Probe_Denied")) return minus_one<CMPIObjectPath>();
    return new_path("Probe_Junk", "InstanceID", association);
}

CMPIObjectPath* link_of(const CMPIObjectPath* source, const char* association) {
    const bool isThing = is_a(source, "Probe_Thing");
    if (isThing && (asks_for(association, "Probe_Link") || asks_for(association, "Probe_Twin"))) {
        return link(association, "Left", thing("one"), "Right", thing("two"));
    }
    if (is_a(source, "Probe_Piece") && asks_for(association, "Probe_Part")) {
        return link("Probe_Part", "Whole", thing("one"), "Piece", part());
    }
    return nullptr;
}

} // namespace

CMPIStatus associator_names(const Asked& asked, const char* association) {
    if (asks_for(association, "Probe_Broken")) return {CMPI_RC_ERR_FAILED, new_string("no way")};
    if (association != nullptr) return_path(asked, far_end(asked.path, association));
    return ok();
}

CMPIStatus associators(const Asked& asked, const char* association) {
    const CMPIObjectPath* end = far_end(asked.path, association);
    if (end == nullptr || end == minus_one<CMPIObjectPath>()) {
        return_instance(asked, reinterpret_cast<const CMPIInstance*>(end));
        return ok();
    }
    CMPIInstance* instance = new_instance(end);
    set(instance, "Colour", "green");
    return_instance(asked, instance);
    return ok();
}

CMPIStatus reference_names(const Asked& asked, const char* association) {
    const CMPIObjectPath* found = link_of(asked.path, association);
    if (found != nullptr) return_path(asked, found);
    return ok();
}

CMPIStatus references(const Asked& asked, const char* association) {
    const CMPIObjectPath* found = link_of(asked.path, association);
    if (found != nullptr) return_instance(asked, new_instance(found));
    return ok();
}

} // namespace probe
