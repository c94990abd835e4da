/* SPDX-License-Identifier: Apache-2.0 */
/*
 * Makes a policy from the catalogues: on battery in battery saver mode, dim the display and hold the chip to 8 W. Puts
 * it into the Policy Builder store, reads it back and removes it again.
 */
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include <vqs/vqs.h>

enum { POLICY_ID = 4711 };

typedef struct Catalogues {
  const QtfConditionInfo* conditions;
  uint32_t conditionCount;
  const QtfActionInfo* actions;
  uint32_t actionCount;
} Catalogues;

static const QtfConditionInfo* findCondition(const Catalogues* catalogues, const char* name) {
  for (uint32_t i = 0; i < catalogues->conditionCount; ++i)
    if (strcmp(catalogues->conditions[i].Name, name) == 0) return &catalogues->conditions[i];
  return NULL;
}

static const QtfActionInfo* findAction(const Catalogues* catalogues, const char* name) {
  for (uint32_t i = 0; i < catalogues->actionCount; ++i)
    if (strcmp(catalogues->actions[i].Name, name) == 0) return &catalogues->actions[i];
  return NULL;
}

/* The value that stands for one of a condition's options; 0 when there is none of that name. */
static uint32_t optionValue(const QtfConditionInfo* condition, const char* text) {
  for (uint32_t i = 0; i < condition->OptionCount; ++i)
    if (strcmp(condition->Options[i].Text, text) == 0) return (uint32_t)condition->Options[i].Value;
  return 0;
}

/* The lowest comparison that a condition takes, and of enumerations the only one. */
static uint32_t firstOperator(const QtfConditionInfo* condition) {
  uint32_t op = 0;
  while (((condition->OperatorMask >> op) & 1) == 0) ++op;
  return op;
}

static void choose(VqsPolicyCondition* entry, const QtfConditionInfo* condition, const char* option) {
  entry->conditionId = condition->Id;
  entry->op = firstOperator(condition);
  entry->value = optionValue(condition, option);
}

/* Returns 0 when the platform cannot carry the policy out. */
static int makePolicy(const Catalogues* catalogues, VqsPolicyV0* policy) {
  const QtfConditionInfo* source = findCondition(catalogues, "Power Source");
  const QtfConditionInfo* mode = findCondition(catalogues, "Power Mode");
  const QtfActionInfo* brightness = findAction(catalogues, "Display Brightness");
  const QtfActionInfo* limit = findAction(catalogues, "SPL");
  if (source == NULL || mode == NULL || brightness == NULL || limit == NULL) return 0;
  if (!source->Enabled || !mode->Enabled || !brightness->Enabled || !limit->Enabled) return 0;

  memset(policy, 0, sizeof(*policy));
  strcpy(policy->name, "Last reserves");
  strcpy(policy->description, "dim and slow down");
  policy->id = POLICY_ID;
  policy->conditionCount = 2;
  choose(&policy->conditions[0], source, "DC Power");
  choose(&policy->conditions[1], mode, "Battery Saver");
  policy->actionCount = 2;
  policy->actions[0].actionId = brightness->Id;
  policy->actions[0].value = 30;
  policy->actions[1].actionId = limit->Id;
  policy->actions[1].value = 8000;
  return 1;
}

static void printPolicy(const Catalogues* catalogues, const VqsPolicyV0* policy) {
  printf("policy %" PRIu32 ": %s\n", policy->id, policy->name);
  for (uint32_t i = 0; i < policy->conditionCount; ++i) {
    const QtfConditionInfo* condition = &catalogues->conditions[policy->conditions[i].conditionId];
    printf("  if   %s, op %" PRIu32 ", %" PRIu32 "\n", condition->Name, policy->conditions[i].op,
           policy->conditions[i].value);
  }
  for (uint32_t i = 0; i < policy->actionCount; ++i) {
    const QtfActionInfo* action = &catalogues->actions[policy->actions[i].actionId];
    printf("  then %s = %" PRIu32 " %s\n", action->Name, policy->actions[i].value, action->Units);
  }
}

/* The result tells whether the driver answered, the verdict what it made of the policy. */
static int storePolicy(QtfSession* session, const VqsPolicyV0* policy) {
  uint32_t verdict = VQS_DRIVER_RESULT_REQUEST_FAILED;
  if (vqsPbAddPolicy(session, policy, NULL, &verdict) != VQS_SUCCESS) return 0;
  if (verdict == VQS_DRIVER_RESULT_TAKEN) return 1;
  fprintf(stderr, "the driver refused the policy: verdict %" PRIu32 "\n", verdict);
  return 0;
}

static int run(QtfSession* session) {
  Catalogues catalogues;
  VqsPolicyV0 policy;
  VqsPolicyV0 stored;
  uint32_t verdict = VQS_DRIVER_RESULT_REQUEST_FAILED;

  if (vqsPbGetConditions(session, &catalogues.conditions, &catalogues.conditionCount) != VQS_SUCCESS) return 0;
  if (vqsPbGetActions(session, &catalogues.actions, &catalogues.actionCount) != VQS_SUCCESS) return 0;
  if (!makePolicy(&catalogues, &policy) || !storePolicy(session, &policy)) return 0;
  if (vqsPbIDGetPolicy(session, POLICY_ID, &stored) != VQS_SUCCESS) return 0;
  printPolicy(&catalogues, &stored);
  return vqsPbDeletePolicy(session, POLICY_ID, &verdict) == VQS_SUCCESS && verdict == VQS_DRIVER_RESULT_TAKEN;
}

int main(void) {
  QtfSession* session = NULL;
  const vqsStatus status = vqsInitialize(&session);
  int done;
  if (status != VQS_SUCCESS) {
    fprintf(stderr, "the session cannot be opened: %s\n", vqsStatusText(status));
    return 1;
  }
  done = run(session);
  vqsUninitialize(session);
  return done ? 0 : 1;
}
