#pragma once

#include <QtQml/qqmlregistration.h>

#include "app/automation/TriggerApp.h"
#include "app/automation/TriggerManager.h"
#include "app/awake/DriveItem.h"
#include "app/awake/DriveManager.h"
#include "app/awake/LidManager.h"
#include "app/fan/FanController.h"
#include "app/fan/FanInfo.h"
#include "app/menu/DriveRow.h"
#include "app/menu/DurationChoice.h"
#include "app/menu/MenuState.h"
#include "app/menu/StatusHeader.h"
#include "app/menu/TemperatureBadge.h"
#include "app/onboarding/OnboardingPage.h"
#include "app/onboarding/OnboardingState.h"
#include "app/session/SleepManager.h"
#include "app/settings/SettingsState.h"
#include "app/shell/UpdateChecker.h"

// What the views know of the models, which know nothing of views. None can be made by a view.

namespace corvane {

struct SleepManagerInQml {
    Q_GADGET
    QML_FOREIGN(corvane::SleepManager)
    QML_NAMED_ELEMENT(SleepManager)
    QML_UNCREATABLE("The application makes its models")
};

struct FanControllerInQml {
    Q_GADGET
    QML_FOREIGN(corvane::FanController)
    QML_NAMED_ELEMENT(FanController)
    QML_UNCREATABLE("The application makes its models")
};

struct UpdateCheckerInQml {
    Q_GADGET
    QML_FOREIGN(corvane::UpdateChecker)
    QML_NAMED_ELEMENT(UpdateChecker)
    QML_UNCREATABLE("The application makes its models")
};

struct TriggerManagerInQml {
    Q_GADGET
    QML_FOREIGN(corvane::TriggerManager)
    QML_NAMED_ELEMENT(TriggerManager)
    QML_UNCREATABLE("The application makes its models")
};

struct LidManagerInQml {
    Q_GADGET
    QML_FOREIGN(corvane::LidManager)
    QML_NAMED_ELEMENT(LidManager)
    QML_UNCREATABLE("The application makes its models")
};

struct DriveManagerInQml {
    Q_GADGET
    QML_FOREIGN(corvane::DriveManager)
    QML_NAMED_ELEMENT(DriveManager)
    QML_UNCREATABLE("The application makes its models")
};

struct MenuStateInQml {
    Q_GADGET
    QML_FOREIGN(corvane::MenuState)
    QML_NAMED_ELEMENT(MenuState)
    QML_UNCREATABLE("The application makes its models")
};

struct SettingsStateInQml {
    Q_GADGET
    QML_FOREIGN(corvane::SettingsState)
    QML_NAMED_ELEMENT(SettingsState)
    QML_UNCREATABLE("The application makes its models")
};

struct StatusHeaderInQml {
    Q_GADGET
    QML_FOREIGN(corvane::StatusHeader)
    QML_NAMED_ELEMENT(StatusHeader)
    QML_UNCREATABLE("The application makes its models")
};

struct TemperatureBadgeInQml {
    Q_GADGET
    QML_FOREIGN(corvane::TemperatureBadge)
    QML_NAMED_ELEMENT(TemperatureBadge)
    QML_UNCREATABLE("The application makes its models")
};

struct OnboardingStateInQml {
    Q_GADGET
    QML_FOREIGN(corvane::OnboardingState)
    QML_NAMED_ELEMENT(OnboardingState)
    QML_UNCREATABLE("The application makes its models")
};

struct DriveItemInQml {
    Q_GADGET
    QML_FOREIGN(corvane::DriveItem)
    QML_VALUE_TYPE(driveItem)
};

struct DriveItemListInQml {
    Q_GADGET
    QML_FOREIGN(QList<corvane::DriveItem>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(corvane::DriveItem)
};

struct DriveRowInQml {
    Q_GADGET
    QML_FOREIGN(corvane::DriveRow)
    QML_VALUE_TYPE(driveRow)
};

struct DriveRowListInQml {
    Q_GADGET
    QML_FOREIGN(QList<corvane::DriveRow>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(corvane::DriveRow)
};

struct TriggerAppInQml {
    Q_GADGET
    QML_FOREIGN(corvane::TriggerApp)
    QML_VALUE_TYPE(triggerApp)
};

struct TriggerAppListInQml {
    Q_GADGET
    QML_FOREIGN(QList<corvane::TriggerApp>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(corvane::TriggerApp)
};

struct FanInfoInQml {
    Q_GADGET
    QML_FOREIGN(corvane::FanInfo)
    QML_VALUE_TYPE(fanInfo)
};

struct FanInfoListInQml {
    Q_GADGET
    QML_FOREIGN(QList<corvane::FanInfo>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(corvane::FanInfo)
};

struct DurationChoiceInQml {
    Q_GADGET
    QML_FOREIGN(corvane::DurationChoice)
    QML_VALUE_TYPE(durationChoice)
};

struct DurationChoiceListInQml {
    Q_GADGET
    QML_FOREIGN(QList<corvane::DurationChoice>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(corvane::DurationChoice)
};

struct OnboardingPageInQml {
    Q_GADGET
    QML_FOREIGN(corvane::OnboardingPage)
    QML_VALUE_TYPE(onboardingPage)
};

struct OnboardingPageListInQml {
    Q_GADGET
    QML_FOREIGN(QList<corvane::OnboardingPage>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(corvane::OnboardingPage)
};

}  // namespace corvane
