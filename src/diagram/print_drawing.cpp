#include "diagram/print_drawing.h"

namespace norvelis {

namespace {

int PageCountOf(engine::Document& document) {
    const auto pages = document.Pages();
    return pages ? pages->Count() : 0;
}

bool PrintEveryNthPage(engine::Document& document, int step) {
    const int count = PageCountOf(document);
    for (int page = 1; page <= count; page += step) {
        if (!PrintPage(document, page)) return false;
    }
    return count > 0;
}

bool Print(engine::Document& document, PrintMode mode, int step) {
    switch (mode) {
        case PrintMode::EveryNthPage:
            return PrintEveryNthPage(document, step);
        case PrintMode::OddPages:
            return PrintEveryNthPage(document, 2);
        case PrintMode::Document:
            break;
    }
    return document.Print();
}

}  // namespace

bool PrintPage(engine::Document& document, int page) {
    return page > PageCountOf(document) || document.PrintPage(page);
}

bool PrintDocument(Host& host, engine::Document& document, PrintMode mode, int step) {
    if (!Print(document, mode, step)) return false;
    host.MessageBox("Visio document has been sent to the Print");
    return true;
}

}  // namespace norvelis
