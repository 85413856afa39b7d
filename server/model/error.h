// What goes wrong in the server is one family of exceptions. Each kind stands where it is thrown.
#ifndef KESTO_SERVER_MODEL_ERROR_H
#define KESTO_SERVER_MODEL_ERROR_H

#include <stdexcept>

namespace cimserver {

class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace cimserver

#endif
