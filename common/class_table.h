// Looking a class up in a table of the code.
#ifndef KESTO_COMMON_CLASS_TABLE_H
#define KESTO_COMMON_CLASS_TABLE_H

#include <strings.h>

#include <cstddef>
#include <span>

// The first row of this class, or null. Letter case is ignored, as everywhere with class names.
template <typename Row>
const Row* find_class(std::span<const Row> rows, const char* className) {
    for (const Row& row : rows) {
        if (strcasecmp(className, row.className) == 0) return &row;
    }
    return nullptr;
}

template <typename Row, std::size_t Rows>
const Row* find_class(const Row (&rows)[Rows], const char* className) {
    return find_class(std::span<const Row>(rows), className);
}

#endif
