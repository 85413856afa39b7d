// The small files that the server is configured by: read at once, and written so that no reader ever sees a
// part.
#ifndef KESTO_SERVER_HTTP_FILE_H
#define KESTO_SERVER_HTTP_FILE_H

#include <sys/types.h>

#include <string>

namespace cimserver {

// A file descriptor, or -1.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }

  private:
    int number_;
};

// All of these throw Error with the file's name and what is wrong with it.

std::string read_file(const std::string& path);
// Refuses a file that others than its owner and group may read, or others than its owner write.
std::string read_private_file(const std::string& path);

// Makes a file that does not exist yet.
void create_file(const std::string& path, const std::string& content, mode_t mode);

// Renames a new file over the old one. It keeps the owner and the permissions of the old one; the first has
// mode 0600.
class Replacement {
  public:
    // Holds the new file's name, PATH.new, until its end, so that of several writers one only is at work.
    explicit Replacement(std::string path);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void commit(const std::string& content);

  private:
    std::string path_;
    std::string newPath_;
    Descriptor file_;
};

} // namespace cimserver

#endif
