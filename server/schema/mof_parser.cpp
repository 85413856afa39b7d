#include "server/schema/mof_parser.h"

#include <cmpidt.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "server/model/text.h"
#include "server/model/types.h"

namespace cimserver {

namespace {

// Files that include themselves end here.
constexpr unsigned DEEPEST_INCLUSION = 16;

void parse_file(const std::string& file, MofReceiver& receiver, unsigned depth);

// MOF's integers beyond those that CIM-XML knows: binary (1011b) and octal (017) ones, as decimal digits.
std::string decimal_number(const std::string& number) {
    const bool negative = number.starts_with('-');
    std::string_view digits(number);
    if (negative || number.starts_with('+')) digits.remove_prefix(1);
    int base = 10;
    if (digits.ends_with('b') || digits.ends_with('B')) {
        base = 2;
        digits.remove_suffix(1);
    } else if (digits.size() > 1 && digits.find_first_not_of("01234567") == std::string_view::npos &&
               digits.starts_with('0')) {
        base = 8;
    }
    std::uint64_t value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (base == 10 || read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return number;
    std::string decimal(negative ? "-" : "");
    return decimal.append(std::to_string(value));
}

class Parser {
  public:
    Parser(std::string_view text, std::string file, MofReceiver& receiver, unsigned depth)
        : tokens_(text, std::move(file)), receiver_(receiver), depth_(depth) {}

    void parse() {
        while (tokens_.current().kind != MofToken::Kind::End) {
            const unsigned line = tokens_.current().line;
            try {
                production();
            } catch (const MofError&) {
                throw;
            } catch (const Error& error) {
                throw MofError(tokens_.file() + ":" + std::to_string(line) + ": " + error.what());
            }
        }
    }

  private:
    void production() {
        if (tokens_.take_if("#")) {
            directive();
        } else if (tokens_.take_if("qualifier")) {
            receiver_.declare(qualifier_declaration());
        } else if (tokens_.is("instance")) {
            tokens_.refuse("instances are not read: all of them come from providers");
        } else {
            Qualifiers qualifiers = optional_qualifiers();
            tokens_.expect("class");
            receiver_.declare(class_declaration(std::move(qualifiers)));
        }
    }

    void directive() {
        tokens_.expect("pragma");
        const std::string pragma = tokens_.expect_name("a pragma");
        tokens_.expect("(");
        const std::string argument = text();
        tokens_.expect(")");
        if (!same_name(pragma, "include")) return; // locale, namespace, ...: nothing that declarations need
        if (depth_ >= DEEPEST_INCLUSION) tokens_.refuse("files are included too deeply");
        const std::filesystem::path here = std::filesystem::path(tokens_.file()).parent_path();
        parse_file((here / argument).string(), receiver_, depth_ + 1);
    }

    // Qualifier NAME : TYPE [] = DEFAULT, Scope(KIND, ...), Flavor(FLAVOR, ...);
    QualifierType qualifier_declaration() {
        QualifierType declared;
        declared.name = tokens_.expect_name("a qualifier");
        tokens_.expect(":");
        declared.type = type();
        if (array_size().first) declared.type = static_cast<CMPIType>(declared.type | CMPI_ARRAY);
        declared.defaultValue = Value::null(declared.type);
        if (tokens_.take_if("=")) declared.defaultValue = value(declared.type);
        while (tokens_.take_if(",")) {
            const bool scope = tokens_.take_if("scope");
            if (!scope) tokens_.expect("flavor");
            tokens_.expect("(");
            do {
                std::string word = tokens_.expect_name(scope ? "a scope" : "a flavor");
                if (scope) {
                    declared.scopes.push_back(lower_cased(word));
                } else {
                    set_flavor(declared.flavors, word);
                }
            } while (tokens_.take_if(","));
            tokens_.expect(")");
        }
        tokens_.expect(";");
        return declared;
    }

    void set_flavor(Flavors& flavors, const std::string& name) {
        struct Flavor {
            std::string_view name;
            bool Flavors::*flag;
            bool value;
        };
        static constexpr std::array<Flavor, 6> FLAVORS = {{
            {"EnableOverride", &Flavors::overridable, true},
            {"DisableOverride", &Flavors::overridable, false},
            {"ToSubclass", &Flavors::toSubclass, true},
            {"Restricted", &Flavors::toSubclass, false},
            {"ToInstance", &Flavors::toInstance, true},
            {"Translatable", &Flavors::translatable, true},
        }};
        for (const Flavor& flavor : FLAVORS) {
            if (!same_name(flavor.name, name)) continue;
            flavors.*flavor.flag = flavor.value;
            return;
        }
        tokens_.refuse("unknown flavor " + name);
    }

    // [NAME, NAME(VALUE), NAME{VALUE, ...} : FLAVOR ..., ...]
    Qualifiers optional_qualifiers() {
        Qualifiers qualifiers;
        if (!tokens_.take_if("[")) return qualifiers;
        do {
            Qualifier qualifier;
            qualifier.name = tokens_.expect_name("a qualifier");
            const QualifierType* declared = receiver_.qualifier_type(qualifier.name);
            if (declared == nullptr) tokens_.refuse("the qualifier " + qualifier.name + " is not declared");
            if (find_qualifier(qualifiers, qualifier.name) != nullptr) {
                tokens_.refuse("the qualifier " + qualifier.name + " occurs twice");
            }
            qualifier.flavors = declared->flavors;
            qualifier.value = declared->type == CMPI_boolean ? Value::boolean(true) : declared->defaultValue;
            if (tokens_.take_if("(")) {
                qualifier.value = value(declared->type);
                tokens_.expect(")");
            } else if (tokens_.is("{")) {
                qualifier.value = value(declared->type);
            }
            if (tokens_.take_if(":")) {
                while (tokens_.current().kind == MofToken::Kind::Name) {
                    set_flavor(qualifier.flavors, tokens_.take().text);
                }
            }
            qualifiers.push_back(std::move(qualifier));
        } while (tokens_.take_if(","));
        tokens_.expect("]");
        return qualifiers;
    }

    ClassDeclaration class_declaration(Qualifiers qualifiers) {
        ClassDeclaration declared;
        declared.qualifiers = std::move(qualifiers);
        declared.name = tokens_.expect_name("a class");
        if (tokens_.take_if("as")) tokens_.refuse("aliases are not read");
        if (tokens_.take_if(":")) declared.superclass = tokens_.expect_name("the superclass");
        tokens_.expect("{");
        while (!tokens_.take_if("}")) {
            feature(declared);
        }
        tokens_.expect(";");
        return declared;
    }

    // A property, a reference or a method.
    void feature(ClassDeclaration& owner) {
        Element element = typed_element("a property");
        if (tokens_.take_if("(")) {
            MethodDeclaration method{std::move(element), {}, owner.name};
            if (!tokens_.is(")")) {
                do {
                    Element parameter = typed_element("a parameter");
                    read_array(parameter);
                    method.parameters.push_back(std::move(parameter));
                } while (tokens_.take_if(","));
            }
            tokens_.expect(")");
            tokens_.expect(";");
            owner.methods.push_back(std::move(method));
            return;
        }
        read_array(element);
        PropertyDeclaration property{std::move(element), {}, owner.name};
        if (owner.property(property.name) != nullptr) {
            tokens_.refuse("the property " + property.name + " occurs twice");
        }
        property.defaultValue = Value::null(property.type);
        if (tokens_.take_if("=")) property.defaultValue = value(property.type);
        tokens_.expect(";");
        owner.properties.push_back(std::move(property));
    }

    // [QUALIFIERS] TYPE NAME, or [QUALIFIERS] CLASS REF NAME
    Element typed_element(std::string_view what) {
        Element element;
        element.qualifiers = optional_qualifiers();
        if (const auto known = type_named(tokens_.current().text); known && !tokens_.is("reference")) {
            element.type = *known;
            tokens_.take();
        } else {
            element.type = CMPI_ref;
            element.referencedClass = tokens_.expect_name("a type");
            tokens_.expect("ref");
        }
        element.name = tokens_.expect_name(what);
        return element;
    }

    CMPIType type() {
        const auto known = type_named(tokens_.current().text);
        if (!known) tokens_.refuse("\"" + tokens_.current().text + "\" is no type");
        tokens_.take();
        return *known;
    }

    void read_array(Element& element) {
        const auto [isArray, size] = array_size();
        if (isArray) element.type = static_cast<CMPIType>(element.type | CMPI_ARRAY);
        element.arraySize = size;
    }

    std::pair<bool, std::optional<unsigned>> array_size() {
        if (!tokens_.take_if("[")) return {false, std::nullopt};
        std::optional<unsigned> size;
        if (tokens_.current().kind == MofToken::Kind::Number) {
            size = static_cast<unsigned>(std::strtoul(tokens_.take().text.c_str(), nullptr, 10));
        }
        tokens_.expect("]");
        return {true, size};
    }

    Value value(CMPIType type) {
        if (tokens_.take_if("null")) return Value::null(type);
        if ((type & CMPI_ARRAY) == 0) return scalar(type);
        const auto elementType = static_cast<CMPIType>(type & ~CMPI_ARRAY);
        std::vector<Value> elements;
        tokens_.expect("{");
        if (!tokens_.is("}")) {
            do {
                elements.push_back(tokens_.take_if("null") ? Value::null(elementType) : scalar(elementType));
            } while (tokens_.take_if(","));
        }
        tokens_.expect("}");
        return {type, std::move(elements)};
    }

    Value scalar(CMPIType type) {
        const unsigned line = tokens_.current().line;
        const MofToken::Kind kind = tokens_.current().kind;
        std::string written;
        if (kind == MofToken::Kind::Text) {
            written = text();
        } else {
            written = tokens_.take().text;
            if (kind == MofToken::Kind::Number) written = decimal_number(written);
        }
        const bool isText = kind == MofToken::Kind::Text;
        std::optional<Value> read;
        if (isText == (type == CMPI_string || type == CMPI_dateTime)) read = parse_scalar(written, type);
        if (read) return *read;
        throw MofError(tokens_.file() + ":" + std::to_string(line) + ": \"" + written +
                       "\" is no value of the type " + type_name(type));
    }

    // Texts that follow each other are one.
    std::string text() {
        if (tokens_.current().kind != MofToken::Kind::Text) tokens_.refuse("expected a text");
        std::string result;
        while (tokens_.current().kind == MofToken::Kind::Text) {
            result += tokens_.take().text;
        }
        return result;
    }

    MofTokens tokens_;
    MofReceiver& receiver_;
    unsigned depth_;
};

void parse_file(const std::string& file, MofReceiver& receiver, unsigned depth) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream || std::filesystem::is_directory(file)) throw MofError("cannot read " + file);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    Parser(text, file, receiver, depth).parse();
}

} // namespace

void parse_mof(std::string_view text, const std::string& file, MofReceiver& receiver) {
    Parser(text, file, receiver, 0).parse();
}

void parse_mof_file(const std::string& file, MofReceiver& receiver) {
    parse_file(file, receiver, 0);
}

} // namespace cimserver
