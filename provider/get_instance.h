// How a get-instance request is answered: each class has its own way from the request's key to an instance.
#ifndef KESTO_PROVIDER_GET_INSTANCE_H
#define KESTO_PROVIDER_GET_INSTANCE_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/results.h"
#include "include/associations.h"
#include "include/classes.h"
#include "platform/platform_records.h"

// A request whose key has been read.
struct GetRequest {
    const CMPIObjectPath* op;
    const char* className;
    const char* nameSpace;
    const char* keyValue;
    const char** properties;
    const CMPIResult* result;
};

using LinkAnswer = void(const GetRequest& request, const FcipLinkEntry& link);
using DirectAnswer = void(const GetRequest& request);

// The way of one class: from the link that the key names in this mode, or directly.
struct GetWay {
    int mode = 0;
    LinkAnswer* answerLink = nullptr;
    DirectAnswer* answer = nullptr;
};

constexpr GetWay by_link(int mode, LinkAnswer* answer) {
    return {mode, answer, nullptr};
}
constexpr GetWay directly(DirectAnswer* answer) {
    return {0, nullptr, answer};
}

// Hands the instance over, if there is one. A way that is neither of the two answers nothing.
void get_instance(const GetWay& way, const GetRequest& request);

// The instance that a class's own builder makes of the link.
template <LinkBuilder* build>
void built(const GetRequest& request, const FcipLinkEntry& link) {
    hand_over(request.result, build(request.className, request.nameSpace, &link, request.properties));
}

// The association whose two ends stand in the request's keys.
using AssociationGetter = int(const CMPIObjectPath* op, const CMPIResult* result);
template <AssociationGetter* get>
void association(const GetRequest& request) {
    get(request.op, request.result);
}

// Classes with a way of their own.
LinkAnswer tcp_endpoint_statistics;
LinkAnswer profile_of_key;
LinkAnswer lan_endpoint_of_interface;
DirectAnswer ethernet_port_statistics;

#endif
