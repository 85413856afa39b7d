// A CIM-XML client that asks all its questions over one open connection. wbemcli, the client of the other
// end-to-end tests, takes a process and a connection for each question: too long for a test that asks two
// thousand.
#ifndef KESTO_TESTS_E2E_CIMXML_CLIENT_H
#define KESTO_TESTS_E2E_CIMXML_CLIENT_H

#include <string>
#include <vector>

#include "tests/e2e/cim_path.h"

namespace e2e {

class CimXmlClient {
  public:
    // `url` as the server prints it: http://127.0.0.1:5988. Throws std::system_error when nothing listens
    // there.
    explicit CimXmlClient(const std::string& url);
    ~CimXmlClient();
    CimXmlClient(const CimXmlClient&) = delete;
    CimXmlClient& operator=(const CimXmlClient&) = delete;

    // The classes of the objects, or object names, that one of the four association operations answers with,
    // asked with one class as its filter ("AssocClass" or "ResultClass"). Throws WbemError when it is
    // answered with an error.
    std::vector<std::string> classes_answered(const std::string& operation, const CimPath& object,
                                              const std::string& filter, const std::string& filterClass);

  private:
    std::string exchange(const std::string& request); // the body of the reply
    void receive_more(std::string& text);

    int socket_;
};

} // namespace e2e

#endif
