#!/bin/bash
# Whoever dismisses the prompt, does not know the password, or cannot be asked, gets no helper and leaves nothing behind.
. "$(dirname "$0")/installation.sh"

traces=$(installation_traces)

# expect_result WHAT OUTPUT RESULT
expect_result() {
    expect_equal "the result of $1" "$(grep -v -e '^before:' -e '^prompt:' -e '^after:' <<<"$2")" "$3"
    expect_equal "the state after $1" "$(grep '^after:' <<<"$2")" "after: installed=false update=false"
    expect_unchanged "$1" "$traces"
}

expect_result "a dismissed prompt" "$(install_answering cancel)" "cancelled"
expect_result "a wrong password" "$(install_answering "password=guess")" "failure: Not authorized"
expect_result "a prompt that nobody can show" "$(as_operator installation-driver "$folder" 2>&1)" \
    "failure: No authentication agent found."

inside mv "$folder/corvane-helper" /root/corvane-helper
incomplete=$(installation_traces)
expect_equal "the result without a helper to install" "$(install_helper)" "before: installed=false update=false
failure: Standalone helper binary not found in app bundle
after: installed=false update=false"
expect_unchanged "an application without a helper" "$incomplete"
inside mv /root/corvane-helper "$folder/corvane-helper"
traces=$(installation_traces)

# An installer that is destroyed takes its prompt with it.
coproc agent { as_operator scripted-agent silence installation-driver "$folder" until-input 2>&1; }
agent_output=${agent[0]} agent_input=${agent[1]} agent_process=$!
said=
while read -r -t 20 -u "$agent_output" line; do
    said+="$line"$'\n'
    [[ $line != prompt:* ]] || echo "enough" >&"$agent_input"
done || true
wait "$agent_process" || fail "the driver failed"
[[ $said == *"prompt: "* && $said == *"destroyed"* ]] || fail "there was no prompt to take away: $said"
if inside pgrep --exact pkexec >/dev/null; then
    fail "pkexec is still there"
fi
expect_unchanged "a destroyed installer" "$traces"

# An application that is killed takes its prompt with it as well: the answer comes too late.
coproc agent { as_operator scripted-agent "late-password=$password" installation-driver "$folder" 2>&1; }
agent_output=${agent[0]} agent_input=${agent[1]} agent_process=$!
said=
while [[ $said != *"prompt taken away"* ]] && read -r -t 20 -u "$agent_output" line; do
    said+="$line"$'\n'
    [[ $line != prompt:* ]] || inside pkill -KILL --full '^installation-driver '
done || true
echo "too late" >&"$agent_input"
wait "$agent_process" && fail "the driver was not killed"
[[ $said == *"prompt: "*"prompt taken away"* ]] || fail "the prompt outlived the application: $said"
if inside pgrep --exact pkexec >/dev/null; then
    fail "pkexec outlived the application"
fi
expect_unchanged "an application that was killed" "$traces"

# The script itself asks who runs it.
if refusal=$(as_operator "$folder/install-helper" 2>&1); then
    fail "an ordinary user may run the script"
fi
expect_equal "what the script says to an ordinary user" "$refusal" "only root can install the helper"

# Whoever brings up its prompt has no say in what is installed, whatever else is there to be installed.
inside cp --archive "$folder" /opt/elsewhere
echo "another program" >>"$BOX_ROOT/opt/elsewhere/corvane-helper"
traces=$(installation_traces)
# shellcheck disable=SC2016 # it is for the inner shell, which stays to be the one that asks
refusal=$(as_operator scripted-agent "password=$password" \
    sh -c '"$@"; echo "status $?"' -- pkexec "$folder/install-helper" /opt/elsewhere 2>&1)
[[ $refusal == "prompt: de.tavrin.corvane.install-helper: "* ]] || fail "the prompt is not the script's own: $refusal"
[[ $refusal == *"
usage: install-helper, without an argument
status 1" ]] || fail "an argument is not refused: $refusal"
expect_unchanged "an argument" "$traces"

inside ln --symbolic "$folder/install-helper" /opt/elsewhere/link
inside /opt/elsewhere/link >/dev/null || fail "the script does not run by a link"
inside cmp "$folder/corvane-helper" "$program" || fail "a link to the script decided what is installed"
