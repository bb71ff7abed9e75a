#include "commands/batch_host.h"

#include "core/log.h"

namespace norvelis::commands {

Answer BatchHost::MessageBox(const Message& message) {
    WriteToScheduleLog(program_, message.text);
    return message.defaultAnswer;
}

}  // namespace norvelis::commands
