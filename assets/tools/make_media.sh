#!/usr/bin/env bash
# Regenerates Tandrel's sound assets from nothing but sox and lame.
#
#   tools/make_media.sh [OUTDIR]     (default: the assets folder beside tools/)
#
# Writes OUTDIR/MatchMusic.mp3 (looping "thinking" music) and OUTDIR/Buzzer.wav
# ("time's up" buzzer). sox runs with -R (repeatable), so the random noise used
# for the drums and the dither are seeded: the output is the same on every run.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
out="${1:-$here/..}"
mkdir -p "$out"
out="$(cd "$out" && pwd)"

for tool in sox lame; do
    command -v "$tool" >/dev/null || { echo "make_media.sh: $tool is required" >&2; exit 1; }
done

tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

SR=44100
BPM=150
BEAT=$((SR * 60 / BPM))   # 17640 samples
STEP=$((BEAT / 4))        # one 16th note: 4410 samples (0.1 s)
BARS=8
LOOP=$((BARS * 16 * STEP)) # 564480 samples = 12.8 s (also a multiple of the
                           # 1152-sample MP3 frame, which keeps lame's padding minimal)

# Mono 32-bit float raw streams are used between steps: they concatenate
# sample-exactly with cat and never clip.
RAW=(-t f32 -r "$SR" -c 1)

# gen CHANNELS LEN EFFECTS...: one synthesized note/hit of exactly LEN samples,
# as raw float on stdout. With CHANNELS > 1, each synth setting makes one channel
# and "remix" in the effects folds them to mono.
gen() {
    local ch=$1 len=$2; shift 2
    sox -R -r "$SR" -c "$ch" -n -t f32 - synth "${len}s" "$@"
}

rest() { head -c $(($1 * 4)) /dev/zero; }   # LEN samples of float silence

# Instruments: each takes PITCH (semitones from A4, as sox's %N) and LEN (samples).
lead() {   # square + octave sine, soft low-pass, short attack, quarter-sine release
    gen 2 "$2" square "%$1" sine "%$(($1 + 12))" remix 1v0.55,2v0.25 \
        lowpass 3200 fade q 0.004 "$2s" "$(($2 * 3 / 4))s"
}
bass() {   # triangle + a touch of square for bite, bouncy release
    gen 2 "$2" triangle "%$1" square "%$1" remix 1v0.8,2v0.2 \
        lowpass 900 fade q 0.004 "$2s" "$(($2 * 2 / 3))s"
}
stab() {   # plucked three-note chord, PITCH is "a,b,c"
    local a b c
    IFS=, read -r a b c <<<"$1"
    gen 3 "$2" pluck "%$a" pluck "%$b" pluck "%$c" remix 1v0.25,2v0.25,3v0.25 \
        highpass 180 fade q 0.002 "$2s" "$(($2 * 4 / 5))s"
}
kick() {   # falling sine thump, roughly exponential decay (three stacked linear fades)
    gen 1 "$2" sine 150:42 fade t 0.001 "$2s" "$2s" fade t 0 "$2s" "$2s" fade t 0 "$2s" "$2s"
}
snare() {  # band-limited noise + a 190 Hz body
    gen 2 "$2" whitenoise sine 190 remix 1v0.5,2v0.25 highpass 300 lowpass 7000 \
        fade t 0.001 "$2s" "$2s" fade t 0 "$2s" "$2s" fade t 0 "$2s" "$2s"
}
hat() {    # 30 ms burst of high-passed noise, then silence for the rest of the step
    local hit=1323
    gen 1 "$hit" whitenoise vol 0.5 highpass 7000 fade t 0 "${hit}s" "${hit}s" fade t 0 "${hit}s" "${hit}s"
    rest $(($2 - hit))
}
tick() {   # woodblock-like clock tick: short high sine blip (PITCH picks tick or tock)
    local hit=1100
    gen 2 "$hit" sine "%$1" sine "%$(($1 + 19))" remix 1v0.8,2v0.2 \
        fade t 0.0005 "${hit}s" "${hit}s" fade t 0 "${hit}s" "${hit}s"
    rest $(($2 - hit))
}

# track INSTRUMENT OUTFILE TOKENS...: renders a monophonic track. A token is
# PITCH/STEPS (16th notes); PITCH "-" is a rest. The track must fill the loop.
track() {
    local inst=$1 file=$2 tok pitch steps total=0; shift 2
    : >"$file"
    for tok in "$@"; do
        pitch=${tok%/*}; steps=${tok#*/}
        if [[ $pitch == - ]]; then rest $((steps * STEP)); else "$inst" "$pitch" $((steps * STEP)); fi >>"$file"
        total=$((total + steps))
    done
    if ((total * STEP != LOOP)); then
        echo "make_media.sh: $inst track has $total steps, expected $((LOOP / STEP))" >&2; exit 1
    fi
}

# ---------------------------------------------------------------------------
# MatchMusic.mp3: 8 bars in C major at 150 BPM, chords C Am F G | C Am Dm G7.
# Lead melody, root/octave bass, off-beat chord stabs, kick/snare/hats and a
# soft tick-tock clock. Bar 8 runs up the scale (and the snare rolls) into bar 1.
# Pitches: semitones from A4 (C5=3, E5=7, G5=10, A5=12, C6=15, C3=-21 ...).
# ---------------------------------------------------------------------------
track lead "$tmp/lead.f32" \
    7/2 10/2 15/2 10/2 7/2 10/2 12/1 10/1 7/2 \
    15/2 12/2 7/2 12/2 15/3 14/1 12/4 \
    12/2 8/2 3/2 8/2 12/2 15/2 12/2 8/2 \
    10/2 5/2 2/2 5/2 10/3 12/1 14/4 \
    15/2 10/2 7/2 10/2 15/2 17/2 19/2 15/2 \
    12/2 7/2 3/2 7/2 12/2 14/2 15/4 \
    17/2 12/2 8/2 12/2 17/2 15/2 12/2 8/2 \
    10/2 8/2 5/2 2/2 -2/1 0/1 2/1 3/1 5/4

# Bass: 8th notes alternating root and octave; bar 8 walks G-A-B up to C.
bassbar() { local r=$1; echo "$r/2 $((r + 12))/2 $r/2 $((r + 12))/2 $r/2 $((r + 12))/2 $r/2 $((r + 12))/2"; }
# shellcheck disable=SC2046
track bass "$tmp/bass.f32" \
    $(bassbar -21) $(bassbar -24) $(bassbar -28) $(bassbar -26) \
    $(bassbar -21) $(bassbar -24) $(bassbar -19) \
    -26/2 -14/2 -26/2 -14/2 -24/2 -12/2 -22/2 -10/2

# Chord stabs on the off-beats (the "and" of every beat).
stabbar() { echo "-/2 $1/2 -/2 $1/2 -/2 $1/2 -/2 $1/2"; }
# shellcheck disable=SC2046
track stab "$tmp/stab.f32" \
    $(stabbar -9,-5,-2) $(stabbar -9,-5,0) $(stabbar -9,-4,0) $(stabbar -10,-7,-2) \
    $(stabbar -9,-5,-2) $(stabbar -9,-5,0) $(stabbar -7,-4,0) $(stabbar -10,-7,-4)

# Drums, one 16-step pattern per bar; the last bar ends in a snare roll.
x=1/1 o=-/1
kickbar="$x $o $o $o $o $o $o $o $x $o $x $o $o $o $o $o"
snarebar="$o $o $o $o $x $o $o $o $o $o $o $o $x $o $o $o"
snarefill="$o $o $o $o $x $o $o $o $o $o $o $o $x $x $x $x"
hatbar="$x $o $x $o $x $o $x $o $x $o $x $o $x $o $x $x"
# shellcheck disable=SC2086
{
    track kick "$tmp/kick.f32" $kickbar $kickbar $kickbar $kickbar $kickbar $kickbar $kickbar $kickbar
    track snare "$tmp/snare.f32" $snarebar $snarebar $snarebar $snarefill $snarebar $snarebar $snarebar $snarefill
    track hat "$tmp/hat.f32" $hatbar $hatbar $hatbar $hatbar $hatbar $hatbar $hatbar $hatbar
}
# Clock: tick-tock on every beat (two woodblock pitches).
tickbar="27/4 22/4 27/4 22/4"
# shellcheck disable=SC2086
track tick "$tmp/tick.f32" $tickbar $tickbar $tickbar $tickbar $tickbar $tickbar $tickbar $tickbar

# Mix the tracks (explicit -v per input, so sox -m does not scale by 1/n).
sox -R -m \
    -v 0.150 "${RAW[@]}" "$tmp/lead.f32" \
    -v 0.210 "${RAW[@]}" "$tmp/bass.f32" \
    -v 0.200 "${RAW[@]}" "$tmp/stab.f32" \
    -v 0.275 "${RAW[@]}" "$tmp/kick.f32" \
    -v 0.160 "${RAW[@]}" "$tmp/snare.f32" \
    -v 0.070 "${RAW[@]}" "$tmp/hat.f32" \
    -v 0.050 "${RAW[@]}" "$tmp/tick.f32" \
    "${RAW[@]}" "$tmp/dry.f32"

# Seamless loop: render the loop three times in a row, add a light room reverb,
# and keep the middle copy, so its start carries the reverb tail of its own end.
# Then normalize and put a 5 ms fade at each end so the seam starts and ends
# at zero. Written as 16-bit for lame (dither is seeded by -R).
cat "$tmp/dry.f32" "$tmp/dry.f32" "$tmp/dry.f32" >"$tmp/dry3.f32"
# (-V1: sox warns wrongly that trim ends after the end of the audio when it
# follows reverb; the length is checked right after instead.)
sox -V1 -R "${RAW[@]}" "$tmp/dry3.f32" "${RAW[@]}" "$tmp/loop.f32" \
    reverb 18 50 45 100 0 0 trim "${LOOP}s" "${LOOP}s" fade t 0.005 "${LOOP}s" 0.005
if (($(stat -c %s "$tmp/loop.f32") != LOOP * 4)); then
    echo "make_media.sh: the music loop has the wrong length" >&2; exit 1
fi
sox -R "${RAW[@]}" "$tmp/loop.f32" -b 16 -e signed-integer "$tmp/music.wav" gain -n -1.5

# Mono, 44.1 kHz, ABR 48 kbit/s: ~80 KB for 12.8 s. ABR (not CBR) because at
# 48 kbit/s CBR the first frame is too small for lame's Xing/LAME tag; with the
# tag, gapless decoders (GStreamer mpegaudioparse, checked with 1.22; lame --decode)
# drop the encoder delay and padding and give back exactly the 12.8 s loop.
lame --quiet --noreplaygain -m m --abr 48 --resample 44.1 "$tmp/music.wav" "$out/MatchMusic.mp3"

# ---------------------------------------------------------------------------
# Buzzer.wav: 0.8 s "time's up" buzzer. Sawtooth at 130 Hz + square detuned to
# 133.5 Hz + a sawtooth an octave down; low-passed so it is harsh, not shrill;
# 11 Hz tremolo, 8 ms attack, 90 ms release; -3 dBFS peak, 16-bit 22050 Hz mono.
# ---------------------------------------------------------------------------
sox -R -r 22050 -c 3 -n -b 16 -e signed-integer "$out/Buzzer.wav" \
    synth 0.8 sawtooth 130 square 133.5 sawtooth 65 remix 1v0.3,2v0.25,3v0.2 \
    lowpass 2500 tremolo 11 35 fade t 0.008 0.8 0.09 gain -n -3

echo "wrote $out/MatchMusic.mp3 and $out/Buzzer.wav"
