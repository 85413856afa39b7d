// Catches what is printed on standard output, by this program or a library in it, while the object lives:
// file descriptor 1 is redirected to a temporary file.
#ifndef KESTO_TESTS_SUPPORT_STDOUT_CAPTURE_H
#define KESTO_TESTS_SUPPORT_STDOUT_CAPTURE_H

#include <string>

namespace test_support {

class StdoutCapture {
  public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // Ends the capture and returns the text; later calls return the same text.
    const std::string& text();

  private:
    int file_ = -1;
    int saved_ = -1;
    bool ended_ = false;
    std::string text_;
};

// What `run` prints.
template <typename Function>
std::string printed_by(Function&& run) {
    StdoutCapture capture;
    run();
    return capture.text();
}

} // namespace test_support

#endif
