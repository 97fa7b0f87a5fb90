// A Russian text with two numbers, and a binary resource, from the tree given as argument:
//   hello ROOT
#include "localization_manager/host/Localization.h"

#include <iostream>

int main(int argc, char** argv) {
    localization_manager::host::Localization localization(LM_MODULE, argc > 1 ? argv[1] : ".");
    auto texts = localization.Texts("download", "ru");
    std::cout << texts.Get("summary", {{"count", 3}, {"folders", 2}}) << "\n";
    std::cout << "icon.svg: " << texts.ReadResource("icon.svg").size() << " bytes\n";
}
