// Where the objects that an operation returns go, one by one as the provider hands them over.
#ifndef KESTO_SERVER_MODEL_RESULT_SINK_H
#define KESTO_SERVER_MODEL_RESULT_SINK_H

#include <vector>

#include "server/model/cim_class.h"
#include "server/model/cim_model.h"

namespace cimserver {

class ResultSink {
  public:
    virtual ~ResultSink() = default;
    virtual void deliver(const Instance& instance) = 0;
    virtual void deliver(const ObjectPath& path) = 0;
    // Providers return none of these.
    virtual void deliver_class(const ClassDeclaration&) {}
    virtual void deliver_qualifier(const QualifierType&) {}
};

// Keeps what is delivered, for answers that have to be put together from several operations.
class Collector : public ResultSink {
  public:
    void deliver(const Instance& instance) override { instances.push_back(instance); }
    void deliver(const ObjectPath& path) override { paths.push_back(path); }

    std::vector<Instance> instances;
    std::vector<ObjectPath> paths;
};

} // namespace cimserver

#endif
