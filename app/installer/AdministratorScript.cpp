#include "app/installer/AdministratorScript.h"

#include "app/installer/AppleScriptSource.h"

namespace corvane {

InstallResult runAsAdministrator(AppleScript& scripting, std::string_view shellScript,
                                 std::string_view prompt, const AdministratorScriptTexts& texts) {
    const AppleScriptResult result = scripting.run(appleScriptSource(shellScript, prompt));
    switch (result.outcome) {
        case AppleScriptResult::Outcome::success:
            return InstallResult::success();
        case AppleScriptResult::Outcome::notCreated:
            return InstallResult::failure(texts.notCreated);
        case AppleScriptResult::Outcome::failure:
            break;
    }
    return result.number == AppleScriptResult::userCancelled
               ? InstallResult::cancelled()
               : InstallResult::failure(result.message.value_or(texts.unknownError));
}

}  // namespace corvane
