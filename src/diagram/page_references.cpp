#include "diagram/page_references.h"

#include "base/name_key.h"
#include "base/text.h"
#include "diagram/meaning.h"
#include "diagram/record_shapes.h"
#include "diagram/shape_text.h"
#include "dictionary/records.h"

namespace norvelis {

void CreatePageReference(DrawingState& drawing, const PageRef& page, const PageReference& reference) {
    const ShapeRef shape = DropAtRandom(drawing, page, "Off-page reference");
    if (!shape) return;
    drawing.references.insert(NameKey(reference.record));
    RememberShape(drawing, reference.record, *shape);
    FormatReferenceText(reference.record, reference.page, *shape);
    shape->SetName(reference.record);
    if (drawing.options.meaning != BoxMeaning::None) {
        const Recordset record = dictionary::RecordIn(drawing.store, drawing.gDrawSchema, reference.record);
        if (!record.Eof()) ShowMeaning(drawing, *shape, record);
    }
    SizeToText(*shape);
    if (const auto link = shape->AddHyperlink()) {
        link->SetSubAddress(reference.page + "/" + reference.record);
        link->SetDescription(reference.record + " on page " + reference.page);
    }
}

bool IsOnAnotherPage(const DrawingState& drawing, std::string_view recordName) {
    return drawing.references.contains(NameKey(Trim(recordName)));
}

}  // namespace norvelis
