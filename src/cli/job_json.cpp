#include "cli/job_json.h"

namespace norvelis::cli {

using Json = nlohmann::ordered_json;

Json JsonOf(const Job& job) {
    const auto orNull = [](const std::optional<std::string>& text) { return text ? Json(*text) : Json(); };
    return {{"scheduleid", job.scheduleid},
            {"name", job.name},
            {"address", orNull(job.address)},
            {"tel", orNull(job.tel)},
            {"fax", orNull(job.fax)},
            {"email", orNull(job.email)},
            {"nextschedule", job.nextschedule ? Json(GeneralDateText(*job.nextschedule)) : Json()},
            {"idmsreport", job.idmsreport},
            {"processed", job.processed},
            {"visiofile", orNull(job.visiofile)}};
}

std::string TextOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace norvelis::cli
