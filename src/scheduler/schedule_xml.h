#pragma once

#include "scheduler/schedule_record.h"
#include "scheduler/xml.h"

// A definition as an element "schedule" whose attributes are the record's fields.
namespace norvelis {

/// The record that the element's attributes hold; a missing attribute has its default. A text counts as the
/// number it begins with, rounded (a half to the even neighbor), 0 when there is none. RuntimeFailure 6 for a
/// number too wide for its field or a date out of range, 13 for an action time that is no date.
///
/// A next action before the last one is lifted to it, and both default to `now`: a stored definition goes on
/// from the present moment, never from a missed time.
ScheduleRecord ReadScheduleXML(const XmlNode& scheduleElement, DateTime now);

/// The schedule element that a definition file holds. std::runtime_error with the parser's reason when the
/// text is not well-formed, or with the name of another element.
XmlNode LoadSchedule(std::string_view text);

/// The element of a record. Its first attribute is the next run from the record's action times.
XmlNode WriteScheduleXML(const ScheduleRecord& record, DateTime now);

/// Reads the element into `record` and gives its next run; see next_time.h.
DateTime GetNextTime(ScheduleRecord& record, const XmlNode& scheduleElement, DateTime now);

}  // namespace norvelis
