#!/bin/bash
# Walks through the demo with the real program: clicks the pages' own buttons, takes a picture of each page and
# checks what must have happened on disk, in the window and between pages, program and install tool.
#
#   walk.sh SITE BUNDLE OUT    SITE is the address of a demo site that takes orders; OUT holds its exchanges.log
#
# Needs a display with a window manager and a D-Bus session of its own; scripts/demo provides all of it.
set -euo pipefail

site=$1 bundle=$2 out=$3
log=$out/exchanges.log
target=$out/target
payload=$(dirname "${BASH_SOURCE[0]}")/../pages/payload
pictures=0
heard=0   # lines of the log that have been matched
matched=  # the line that was waited for last
text=     # of the element that was clicked or read last

running() { kill -0 "$program" 2>/dev/null; }

fail() {
    local status=0
    printf '\nExpected: %s\nSeen:     %s\n' "$1" "$2"
    if ! running; then
        wait "$program" || status=$?
        echo "The installer has exited with $status."
    fi
    import -window root "$out/failure.png" && echo "Picture:  $out/failure.png"
    exit 1
}

step() { printf '\n== %s\n' "$1"; }

# await SENTENCE COMMAND...: until the command succeeds, at most half a minute.
await() {
    local deadline=$((SECONDS + 30)) sentence=$1
    until "${@:2}"; do
        ((SECONDS < deadline)) || fail "$sentence" 'it did not happen within 30 seconds'
        sleep 0.1
    done
}

# hear REGEX: waits for a matching exchange after the last matched one.
hear() {
    local deadline=$((SECONDS + 30)) number
    until number=$(tail -n "+$((heard + 1))" "$log" | grep -nEm1 -- "$1"); do
        ((SECONDS < deadline)) || fail "the exchange '$1'" "$(tail -n "+$((heard + 1))" "$log" | tail -n 5)"
        running || fail "the exchange '$1'" 'nothing of the kind'
        sleep 0.1
    done
    matched=${number#*:}
    heard=$((heard + ${number%%:*}))
}

# order ACTION PAGE [SELECTOR]: makes the shown page click or read one of its elements, whose text is then
# in `text`.
order() {
    text=$(curl --silent --show-error --fail-with-body --max-time 45 --get "$site/walk/order" \
        --data-urlencode "action=$1" --data-urlencode "page=/$2" --data-urlencode "selector=${3-h1}" 2>&1) ||
        fail "'${3-h1}' on page '$2'" "$text"
}

click() { order click "$@"; }

# reads PAGE SELECTOR TEXT: waits until the element's text contains TEXT.
reads() {
    local deadline=$((SECONDS + 30))
    order read "$1" "$2"
    until [[ $text == *"$3"* ]]; do
        ((SECONDS < deadline)) || fail "'$3' in '$2' of page '$1'" "$text"
        sleep 0.1
        order read "$1" "$2"
    done
}

# picture NAME [PAGE]: saves the installer's window with its frame and its sheet, the page at rest.
picture() {
    local x y width height left right top bottom
    [[ -z ${2-} ]] || order read "$2"
    read -r x y width height < <(xwininfo -id "$window" |
        sed -nE 's/.*(Absolute upper-left [XY]|Width|Height): +//p' | xargs)
    IFS=', ' read -r left right top bottom < <(xprop -id "$window" -notype _NET_FRAME_EXTENTS | sed 's/.*= //')
    ((++pictures))
    import -window root \
        -crop "$((width + left + right))x$((height + top + bottom))+$((x - left))+$((y - top))" +repage \
        "$out/$(printf '%02d' "$pictures")-$1.png"
}

# check SENTENCE COMMAND...: the command succeeds.
check() {
    "${@:2}" || fail "$1" 'it is not so'
    echo "ok        $1"
}

installedVersion() { sed -n 's/^version=//p' "$target/current/product.record" 2>/dev/null || true; }
isInstalled() { [[ $(installedVersion) == "$1" ]]; }
isIconic() { xprop -id "$window" WM_STATE | grep --quiet 'window state: Iconic'; }
isNormal() { xprop -id "$window" WM_STATE | grep --quiet 'window state: Normal'; }
polls() { curl --silent --fail --max-time 10 "$site/walk/state" | sed -n 's/^polls=//p'; }
# The windows that the window manager manages: the installer's, and its sheet when there is one.
clients() { xprop -root -notype _NET_CLIENT_LIST | grep --only-matching '0x[0-9a-f]*'; }
findWindow() { window=$(clients | head -n 1) && [[ $window ]]; }
hasSheet() { clients | grep --quiet --invert-match "^$window$"; }
polledSince() { (($(polls) >= $1 + 3)); }

# The page machine.html runs two commands, one after the other.
hearMachine() {
    hear '^command +getstate '
    hear "^callback +action=getstate result=success .*productState=$1( |$)"
    hear '^command +getbrowsers '
    hear '^callback +action=getbrowsers result=success .*type\[.*\]='
}

# startTool WHAT WORD: from the machine page to the first report of the install tool.
startTool() {
    click machine.html "#$1"
    click machine.html '#continue'
    hear "^page +install.html do=$1"
    reads install.html h1 "Ready to $1"
    picture "$1-ready" install.html
    click install.html '#continue'
    hear "^command +$1 .*reportUrl=$site/report"
    hear "^report +$1 [0-9]+ %"
    hear '^page +install.html .*job='
}

# endTool WHAT: from there to the page that shows the result.
endTool() {
    hear "^report +$1 success"
    reads install.html '#notice' 'Demo Agent'
    picture "$1-done" install.html
}

# lookAgain STATE [PICTURE]: through the last page, with a picture of it, back to the machine page.
lookAgain() {
    click install.html '#continue'
    hear '^page +done.html'
    [[ -z ${2-} ]] || picture "$2" done.html
    click done.html '#again'
    hearMachine "$1"
}

step 'Start'
"$bundle/Contents/MacOS/vok-installer" >"$out/program.log" 2>&1 &
program=$!
trap 'kill "$program" 2>/dev/null || true' EXIT
await 'the window of the installer opens' findWindow
hear '^start +welcome.html agentId=[^ ]+ version=[^ ]+ os=.* lang=[^ ]+ campaign=demo channel=site'
picture splash
curl --silent --fail --max-time 10 "$site/walk/release"

step 'Welcome'
reads welcome.html '#facts' "$(sed -E 's/.* agentId=([^ ]+) .*/\1/' <<<"$matched")"
picture welcome welcome.html

step 'What is on this computer'
click welcome.html '#continue'
hearMachine NotInstalled
reads machine.html '#facts' 'Not installed'
picture machine machine.html

step 'Install'
startTool install
hear '^report +install 60 %'
picture install-running install.html
endTool install
check 'The agent is on disk.' cmp "$payload/agent-1.0.txt" "$target/current/agent.txt"
check 'Its version is 1.0.0.' isInstalled 1.0.0
lookAgain Installed 'done'
reads machine.html '#facts' 'Version 1.0.0'
picture machine-installed machine.html

step 'Upgrade, with the window hidden'
startTool upgrade
before=$(polls)
click install.html '#hide'
hear '^command +hide '
hear '^callback +action=hide result=success'
await 'the window is miniaturised' isIconic
await 'the page continues to poll in the hidden window' polledSince "$before"
hear '^report +upgrade success'
check 'The window stayed miniaturised to the end.' isIconic
xdotool windowactivate "$window"
await 'the window comes back' isNormal
reads install.html h1 Upgraded
picture upgrade-done install.html
check 'The version changed to 1.1.0.' isInstalled 1.1.0
check 'The newer agent is on disk.' cmp "$payload/agent-1.1.txt" "$target/current/agent.txt"
lookAgain Installed
reads machine.html '#facts' 'Version 1.1.0'

step 'Repair, after damage'
echo damaged >"$target/current/agent.txt"
startTool repair
endTool repair
check 'The damage is repaired.' cmp "$payload/agent-1.1.txt" "$target/current/agent.txt"
lookAgain Installed

step 'Uninstall'
startTool uninstall
endTool uninstall
check 'The target directory is gone.' test ! -e "$target"
lookAgain NotInstalled
reads machine.html '#facts' 'Not installed'
picture machine-uninstalled machine.html

step 'Console'
click machine.html '#console'
hear '^page +console.html'
click console.html '#getstate'
hear '^callback +action=getstate .* -> console.html'
reads console.html '#answer' NotInstalled
picture console console.html

step 'An unknown command'
click console.html '#unknown'
hear '^command +dance '
await 'a sheet shows that the command failed' hasSheet
picture sheet command
xdotool key Return
await 'the sheet closes with its button' eval '! hasSheet'
click command '#console'
hear '^page +console.html'

step 'A package that does not exist'
click console.html '#bad'
hear '^report +install failed .*404'
reads install.html '#notice' 'cannot be downloaded'
picture install-failed install.html
check 'The failed installation left nothing.' test ! -e "$target"

step 'Cancel'
click install.html '#cancel'
hear '^callback +action=cancel result=success .*-> cancel.html'
reads cancel.html h1 'Quit the installer?'
picture cancel cancel.html

step 'Finish'
click cancel.html '#quit'
hear '^command +finish '
await 'the installer ends' eval '! running'
wait "$program" && status=0 || status=$?
((status == 0)) || fail 'the installer exits with 0' "it exited with $status"
echo 'ok        The installer exited with 0.'

printf '\nThe walk is complete. Pictures: %s/*.png\n' "$out"
