// Declarations of classes and qualifiers as CIM-XML.
#ifndef KESTO_SERVER_CIMXML_CLASS_WRITER_H
#define KESTO_SERVER_CIMXML_CLASS_WRITER_H

#include <optional>

#include "server/cimxml/xml_writer.h"
#include "server/model/cim_class.h"
#include "server/model/text.h"

namespace cimserver {

// How much of a class is written.
struct ClassExtent {
    bool localOnly = false; // without what is inherited unchanged
    bool qualifiers = true;
    bool classOrigin = false;
    std::optional<NameSet> wanted; // properties; without it, all
};

void write_class(XmlWriter& xml, const ClassDeclaration& declared, const ClassExtent& extent);
void write_qualifier_type(XmlWriter& xml, const QualifierType& declared);
void write_qualifiers(XmlWriter& xml, const Qualifiers& qualifiers, bool localOnly);

} // namespace cimserver

#endif
