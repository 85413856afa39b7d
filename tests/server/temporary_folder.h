// A folder that is there for as long as one test.
#ifndef KESTO_TESTS_SERVER_TEMPORARY_FOLDER_H
#define KESTO_TESTS_SERVER_TEMPORARY_FOLDER_H

#include <sys/types.h>

#include <string>

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(const std::string& name) const { return path_ + "/" + name; }
    // Makes the file, or replaces it; the result is its path.
    std::string write(const std::string& name, const std::string& content, mode_t mode = 0600) const;

  private:
    std::string path_;
};

std::string content_of(const std::string& file); // empty when it is not there

#endif
