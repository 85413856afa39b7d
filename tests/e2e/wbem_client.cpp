#include "tests/e2e/wbem_client.h"

#include <algorithm>
#include <sstream>

#include "tests/e2e/program.h"

namespace e2e {

namespace {

std::string without_quotes(const std::string& text) {
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

std::vector<CimPath> read_paths(const std::string& output) {
    std::vector<CimPath> paths;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) paths.push_back(CimPath::parse(line));
    }
    return paths;
}

// Each instance is its path on one line, then a line "-Name=value" for every property.
std::vector<CimInstance> read_instances(const std::string& output) {
    std::vector<CimInstance> instances;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) continue;
        if (line.front() != '-') {
            instances.push_back({CimPath::parse(line), {}});
            continue;
        }
        const std::size_t equals = line.find('=');
        if (instances.empty() || equals == std::string::npos) throw WbemError(0, "unexpected line: " + line);
        instances.back().properties.emplace_back(line.substr(1, equals - 1),
                                                 without_quotes(line.substr(equals + 1)));
    }
    return instances;
}

std::vector<std::string> options_of(const Filter& filter) {
    std::vector<std::string> options;
    const auto add = [&](const char* option, const std::string& value) {
        if (!value.empty()) options.insert(options.end(), {option, value});
    };
    add("-ac", filter.assocClass);
    add("-arc", filter.resultClass);
    add("-ar", filter.role);
    add("-arr", filter.resultRole);
    return options;
}

} // namespace

bool CimInstance::has(std::string_view name) const {
    return std::any_of(properties.begin(), properties.end(),
                       [&](const auto& property) { return lower_case(property.first) == lower_case(name); });
}

std::string CimInstance::operator[](std::string_view name) const {
    for (const auto& [propertyName, value] : properties) {
        if (lower_case(propertyName) == lower_case(name)) return value;
    }
    throw std::out_of_range("no property " + std::string(name) + " in an instance of " + path.className);
}

CimPath CimInstance::reference(std::string_view name) const {
    std::string text = (*this)[name];
    if (text.size() >= 2 && text.front() == '{' && text.back() == '}') text = text.substr(1, text.size() - 2);
    return CimPath::parse(text);
}

std::vector<std::string> CimInstance::names() const {
    std::vector<std::string> names;
    for (const auto& property : properties) {
        names.push_back(property.first);
    }
    return names;
}

WbemClient::WbemClient(std::string serverUrl, std::string cimNamespace)
    : url_(std::move(serverUrl)), nameSpace_(std::move(cimNamespace)) {}

std::string WbemClient::run(const std::string& operation, const std::vector<std::string>& options,
                            const std::string& object, const std::string& last) const {
    std::vector<std::string> command = {WBEMCLI, operation, "-nl", "-dr"};
    command.insert(command.end(), options.begin(), options.end());
    command.push_back(url_ + "/" + nameSpace_ + ":" + object);
    if (!last.empty()) command.push_back(last);
    const ProgramResult result = run_program(command);
    if (result.status == 127) throw WbemError(0, "wbemcli is missing (Debian package sblim-wbemcli)");
    // An error stands between two lines with a star, and the exit status does not always show it.
    const bool complains = result.output.starts_with("*");
    if (complains || result.status != 0) {
        const std::size_t open = result.output.find("Cim: (");
        const int code = open == std::string::npos ? 0 : std::stoi(result.output.substr(open + 6));
        throw WbemError(code, result.output);
    }
    return result.output;
}

std::vector<CimInstance> WbemClient::enumerate(const std::string& className,
                                               const std::string& properties) const {
    return read_instances(run("ei", {}, className, properties));
}

std::vector<CimPath> WbemClient::enumerate_names(const std::string& className) const {
    return read_paths(run("ein", {}, className));
}

CimInstance WbemClient::get(const CimPath& path, const std::string& properties) const {
    // The path's line is wbemcli's own notation of the request; only the properties come from the server.
    std::string output = run("gi", {}, path.command_line_text(), properties);
    const std::size_t lineEnd = output.find('\n');
    output = path.className + output.substr(std::min(lineEnd, output.size()));
    const std::vector<CimInstance> instances = read_instances(output);
    if (instances.size() != 1) throw WbemError(0, "expected one instance: " + output);
    return instances.front();
}

std::vector<CimInstance> WbemClient::associators(const CimPath& source, const Filter& filter) const {
    return read_instances(run("ai", options_of(filter), source.command_line_text()));
}

std::vector<CimPath> WbemClient::associator_names(const CimPath& source, const Filter& filter) const {
    return read_paths(run("ain", options_of(filter), source.command_line_text()));
}

std::vector<CimInstance> WbemClient::references(const CimPath& source, const Filter& filter) const {
    return read_instances(run("ri", options_of(filter), source.command_line_text()));
}

std::vector<CimPath> WbemClient::reference_names(const CimPath& source, const Filter& filter) const {
    return read_paths(run("rin", options_of(filter), source.command_line_text()));
}

} // namespace e2e
