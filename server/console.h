// The server's own console, apart from what its provider prints.
//
// Providers trace to standard output. The console keeps the original standard output and error for the
// server's messages; redirect_provider then sends everything else that the process prints to standard output
// elsewhere.
#ifndef KESTO_SERVER_CONSOLE_H
#define KESTO_SERVER_CONSOLE_H

#include <mutex>
#include <string>

namespace cimserver {

class Console {
  public:
    Console();
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    // To a file, which is appended to, or to standard error for "-". Throws Error.
    void redirect_provider(const std::string& file) const;

    void say(const std::string& line) { write(out_, line); }    // to the original standard output
    void warn(const std::string& line) { write(error_, line); } // to the original standard error

  private:
    void write(int descriptor, const std::string& line);

    std::mutex lock_;
    int out_;
    int error_;
};

} // namespace cimserver

#endif
