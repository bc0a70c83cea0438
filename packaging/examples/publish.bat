#!/bin/sh
# Makes a web page of the station's pictures. The station runs this file every ten minutes, in its working folder, when a
# file of this name stands there; by hand: cd there, and "sh publish.bat". Settings: publish.conf. What went wrong in the
# last run stands in publish.log, or on the terminal.
umask 022
export LC_ALL=C

pictures="picture4 picture1 picture5"
hours="<span>0 h</span><span>6 h</span><span>12 h</span><span>18 h</span><span>24 h</span>"
stale=1200 # seconds, two publications: pictures as old as that come with a warning

[ -t 2 ] || { (: >publish.log) 2>/dev/null && exec 2>>publish.log; }

say() { printf 'publish: %s\n' "$1" >&2; }

# Reads publish.conf, which is data and never run, but for AFTER.
settings() {
    station="" folder="" refresh="" after=""
    if [ -e publish.conf ]; then
        while IFS= read -r line || [ -n "$line" ]; do
            line=$(printf '%s' "$line" | tr -d '\r' | sed 's/^[ \t]*//; s/[ \t]*$//; s/^\([A-Za-z]*\)[ \t]*=[ \t]*/\1=/')
            case $line in
            '' | '#'*) ;;
            STATION=*) station=${line#*=} ;;
            FOLDER=*) folder=${line#*=} ;;
            REFRESH=*) refresh=${line#*=} ;;
            AFTER=*) after=${line#*=} ;;
            *) say "publish.conf: what is '$line'?" ;;
            esac
        done <publish.conf
    fi
    station=${station:-$(uname -n)}
    folder=${folder:-web}
    # shellcheck disable=SC2088 # the shell leaves the tilde of a variable alone
    case $folder in
    '~/'*) folder=$HOME/${folder#??} ;;
    -*) folder=./$folder ;;
    esac
    case ${refresh:=300} in
    *[!0-9]* | ?????*) refresh=0 ;;
    esac
    if [ "$refresh" -lt 30 ] || [ "$refresh" -gt 3600 ]; then
        say "publish.conf: REFRESH takes a number from 30 to 3600; 300 is taken"
        refresh=300
    fi
}

find_converter() {
    for converter in ./Bmp2Png.exe Bmp2Png; do
        command -v "$converter" >/dev/null && return
    done
    say "there is no Bmp2Png, neither here as Bmp2Png.exe nor on the PATH"
    converter=false
}

# convert NAME: puts NAME.png into the folder, with the time of the bitmap. What fails leaves the picture that stands there.
convert() {
    [ -e "$1.bmp" ] || return
    rm -f "$1.png"
    new=$folder/.$1.png.new
    if timeout -k 2 20 "$converter" "$1.bmp" 9>&- && [ -s "$1.png" ] &&
        cp "$1.png" "$new" && touch -r "$1.bmp" "$new" && mv -f "$new" "$folder/$1.png"; then
        return
    fi
    rm -f "$new"
    say "$1.bmp could not be published"
}

escaped() {
    printf '%s' "$1" | tr -d '\000-\037\177' |
        sed "s/&/\\&amp;/g; s/</\\&lt;/g; s/>/\\&gt;/g; s/\"/\\&quot;/g; s/'/\\&#39;/g"
}

# stamp NAME FORMAT [-u]: the time of a picture in the folder; nothing when there is none.
stamp() { date ${3:+"$3"} -r "$folder/$1.png" "+$2" 2>/dev/null; }

# Finds the time of the newest picture: when it was published, in seconds since 1970, and its name; none: 0.
newest() {
    published=0 latest=""
    for name in $pictures; do
        time=$(stamp "$name" %s) || continue
        if [ "$time" -gt "$published" ]; then published=$time latest=$name; fi
    done
}

# both_times NAME: UTC, and local time where it differs.
both_times() {
    utc=$(stamp "$1" '%Y-%m-%d %H:%M' -u)
    here=$(stamp "$1" '%Y-%m-%d %H:%M')
    printf '<span>%s UTC</span>' "$utc"
    if [ "$here" != "$utc" ]; then printf ' <span>(%s local time)</span>' "$here"; fi
}

# size NAME: width and height from the head of a PNG, so that the page does not jump while it loads.
size() {
    od -An -v -tu1 -j16 -N8 "$folder/$1.png" | awk 'NF == 8 {
        printf "width=\"%d\" height=\"%d\"", (($1 * 256 + $2) * 256 + $3) * 256 + $4, (($5 * 256 + $6) * 256 + $7) * 256 + $8
    }'
}

# figure NAME HEADING CAPTION: a picture. The time in its address keeps browsers from showing an older one.
figure() {
    printf '<figure>\n<h2>%s</h2>\n' "$2"
    if time=$(stamp "$1" %s); then
        source="$1.png?$time"
        printf '<a href="%s"><img src="%s" %s alt="%s: %s"></a>\n' "$source" "$source" "$(size "$1")" "$2" "$3"
        if [ "$1" = picture5 ]; then printf '<div class="hours" aria-hidden="true">%s</div>\n' "$hours"; fi
        if [ $((published - time)) -ge 120 ]; then printf '<p class="old">Not renewed since %s</p>\n' "$(both_times "$1")"; fi
    else
        printf '<p class="none">No picture yet</p>\n'
    fi
    printf '<figcaption>%s</figcaption>\n</figure>\n' "$3"
}

page() {
    name=$(escaped "$station")
    cat <<PAGE
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="dark">
<meta http-equiv="refresh" content="$refresh">
<title>Lightning at $name</title>
<link rel="icon" href="data:,">
<style>
body { margin: 0 auto; padding: 1rem; max-width: 36.4rem; background: #101418; color: #e4e8ec;
  font: 1rem/1.45 system-ui, sans-serif; }
h1 { margin: 0; font-size: 1.5rem; line-height: 1.2; overflow-wrap: anywhere; }
h2 { margin: 0 0 .5rem; font-size: 1.1rem; }
header p { margin: .25rem 0 0; color: #b4bec8; }
time span, .old span { white-space: nowrap; }
#warning { margin: 1rem 0 0; padding: .6rem .8rem; background: #5c1a00; color: #fff; border-radius: .3rem; }
#warning[hidden] { display: none; }
main { display: grid; gap: 1rem; margin-top: 1rem; align-items: start; grid-template-columns: minmax(0, 1fr); }
figure { margin: 0; padding: .75rem; background: #1b2127; border-radius: .3rem; }
a { display: block; }
a:focus-visible { outline: 3px solid #8cf; outline-offset: 2px; }
img { display: block; max-width: 100%; height: auto; margin: 0 auto; background: #000; }
figcaption { margin-top: .5rem; color: #b4bec8; font-size: .9rem; }
.old { margin: .5rem 0 0; color: #ffb380; }
.none { display: grid; place-items: center; aspect-ratio: 1; margin: 0; background: #000; color: #b4bec8; }
.hours { display: flex; justify-content: space-between; color: #b4bec8; font-size: .8rem; }
@media (min-width: 48rem) { body { max-width: 73.8rem; } main { grid-template-columns: repeat(2, minmax(0, 1fr)); } }
@media (min-width: 88rem) { body { max-width: 111.2rem; } main { grid-template-columns: repeat(3, minmax(0, 1fr)); } }
@media (min-width: 216rem) { body { max-width: 215rem; } img { width: 1114px; image-rendering: pixelated; } }
</style>
</head>
<body>
<header>
<h1>Lightning at $name</h1>
PAGE
    if [ -n "$latest" ]; then
        printf '<p>Published <time datetime="%s">%s</time><span id="age"></span></p>\n' \
            "$(stamp "$latest" %Y-%m-%dT%H:%M:%SZ -u)" "$(both_times "$latest")"
        printf '<p id="warning" role="status" hidden></p>\n'
    else
        printf '<p>Nothing has been published yet.</p>\n'
    fi
    printf '</header>\n<main>\n'
    figure picture4 Map "Strikes located together with other stations, north up. White is new, red is old."
    figure picture1 "Polar display" "Strikes heard here: the angle is the bearing, north up; the louder, the nearer to the centre."
    figure picture5 "History of the day" "Bearings from midnight to midnight, north at the top; red is weak, blue-white is strong."
    printf '</main>\n'
    [ -z "$latest" ] || cat <<PAGE
<script>
(function () {
  var age = document.getElementById("age"), warning = document.getElementById("warning");
  function tell() {
    var seconds = Math.max(0, Math.floor(Date.now() / 1000) - $published);
    var minutes = Math.floor(seconds / 60), hours = Math.floor(minutes / 60), days = Math.floor(hours / 24);
    var text = days > 1 ? days + " days" : hours > 1 ? hours + " hours" :
      (minutes ? minutes + " min " : "") + seconds % 60 + " s";
    age.textContent = ", " + text + " ago";
    var old = seconds > $stale, isShown = !warning.hidden;
    if (old !== isShown) {
      warning.textContent = old ? "These pictures are old. The station may be switched off or without a connection." : "";
      warning.hidden = !old;
    }
  }
  tell();
  setInterval(tell, 1000);
})();
</script>
PAGE
    printf '</body>\n</html>\n'
}

settings
if ! mkdir -p "$folder" || [ ! -w "$folder" ]; then
    say "cannot write to the folder $folder"
    exit 1
fi

# One run at a time; one that comes meanwhile waits, so that the last pictures are those that stay.
exec 9>>"$folder/.lock" || exit 1
flock -w 90 9 || {
    say "an earlier run does not end"
    exit 1
}
find_converter
for name in $pictures; do convert "$name"; done
newest
if page >"$folder/.index.html.new" 2>/dev/null && [ "$(tail -n 1 "$folder/.index.html.new")" = "</html>" ]; then
    mv -f "$folder/.index.html.new" "$folder/index.html" || exit 1
else
    rm -f "$folder/.index.html.new"
    say "the page could not be written"
    exit 1
fi
exec 9>&-

# The upload may take longer: one at a time, and none is waited for.
[ -n "$after" ] || exit 0
exec 9>>"$folder/.upload" || exit 1
flock -n 9 || {
    say "an earlier upload still runs"
    exit 1
}
timeout -k 10 600 sh -c "$after" >&2 9>&- || {
    say "AFTER failed with exit code $?"
    exit 1
}
