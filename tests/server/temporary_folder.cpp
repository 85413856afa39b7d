#include "tests/server/temporary_folder.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

TemporaryFolder::TemporaryFolder() {
    char name[] = "/tmp/cimserver-test-XXXXXX";
    path_ = mkdtemp(name);
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::remove_all(path_);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& content, mode_t mode) const {
    std::string file = path(name);
    std::filesystem::remove(file);
    std::ofstream(file) << content;
    chmod(file.c_str(), mode);
    return file;
}

std::string content_of(const std::string& file) {
    std::ifstream stream(file);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}
