#include "classes/settings.h"

#include "classes/builder.h"
#include "classes/text.h"
#include "common/results.h"
#include "common/trace.h"
#include "platform/platform_row.h"
#include "platform/row_lookup.h"

CMPIObjectPath* fill_settings_reference(const char* function, const char* className, const char* nameSpace,
                                        const FcipLinkEntry* link) {
    trace_entering(function);
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (is_usable(path)) {
        set_host_name(path);
        const auto interface = decimal<31>(link->kfmFcipLinkIfIndex);
        add_keys(path, {chars("InstanceID", interface)});
        trace_line(function, 94);
    }
    trace_exiting(function);
    return path;
}
