// print_class_tables: writes docs/package-classes.md to the standard output.
#include "tests/class_page/class_page.h"

#include <iostream>

int main() {
    std::cout << brimwave::testing::ClassPage() << std::flush;
    return std::cout ? 0 : 1;
}
