#!/usr/bin/python3
"""Makes the sounds that the settings offer, as WAV files: make_sounds.py FOLDER.

Each one is a few lines of arithmetic, so that a sound can be read, changed and licensed like code.
"""
import array
import math
import pathlib
import random
import sys
import wave

RATE = 44_100
PEAK = 0.5  # of full scale: -6 dB
FADE_IN = 0.002  # seconds; no click at either end
FADE_OUT = 0.030

TAU = 2 * math.pi


def silence(seconds):
    return [0.0] * round(seconds * RATE)


def tone(pitch, seconds, decay, *, attack=0.003, partials=((1, 1.0),)):
    """Sines at multiples of `pitch`, dying away; the higher ones sooner.

    `pitch` is in hertz, or a function of the time. `decay`: seconds until a third is left.
    """
    at = pitch if callable(pitch) else lambda t: pitch
    sound = []
    phase = 0.0
    for i in range(round(seconds * RATE)):
        t = i / RATE
        phase += TAU * at(t) / RATE
        level = min(1.0, t / attack)
        sound.append(level * sum(loud * math.exp(-t * math.sqrt(ratio) / decay) * math.sin(ratio * phase)
                                 for ratio, loud in partials))
    return sound


def harmonics(count, fall=1.0):
    return tuple((n, n ** -fall) for n in range(1, count + 1))


def noise(seconds, seed):
    source = random.Random(seed)
    return [2 * source.random() - 1 for _ in range(round(seconds * RATE))]


def resonance(sound, pitch, width):
    """The part of the sound around `pitch`, in a band of `width` hertz."""
    at = pitch if callable(pitch) else lambda t: pitch
    radius = math.exp(-math.pi * width / RATE)
    one = two = 0.0
    heard = []
    for i, x in enumerate(sound):
        y = (1 - radius) * x + 2 * radius * math.cos(TAU * at(i / RATE) / RATE) * one - radius * radius * two
        one, two = y, one
        heard.append(y)
    return heard


def shaped(sound, level):
    return [x * level(i / RATE) for i, x in enumerate(sound)]


def mixed(*placed):
    """Adds up (start in seconds, loudness, sound)."""
    whole = silence(max(at + len(sound) / RATE for at, _, sound in placed) + 0.001)
    for at, loud, sound in placed:
        start = round(at * RATE)
        for i, x in enumerate(sound):
            whole[start + i] += loud * x
    return whole


def plucked(pitch, seconds, seed, damping):
    """A plucked string: a burst of noise, repeated and softened each time."""
    loop = noise(1 / pitch, seed)
    loop = [(loop[i - 2] + 2 * loop[i - 1] + loop[i]) / 4 for i in range(len(loop))]
    middle = sum(loop) / len(loop)  # an offset would not die away
    loop = [x - middle for x in loop]
    sound = []
    for i in range(round(seconds * RATE)):
        here, after = i % len(loop), (i + 1) % len(loop)
        sound.append(loop[here])
        loop[here] = damping * (loop[here] + loop[after]) / 2
    return sound


def glass():
    return tone(1318.5, 0.95, 0.30, partials=((1, 1.0), (2.32, 0.6), (4.25, 0.35), (6.63, 0.15)))


def ping():
    return tone(2093.0, 0.60, 0.11, attack=0.001, partials=((1, 1.0), (2, 0.15)))


def hero():
    brass = harmonics(9, 1.15)
    return mixed((0.00, 0.8, tone(392.0, 0.16, 0.30, attack=0.02, partials=brass)),
                 (0.13, 0.8, tone(523.3, 0.16, 0.30, attack=0.02, partials=brass)),
                 (0.26, 0.7, tone(659.3, 0.65, 0.35, attack=0.02, partials=brass)),
                 (0.26, 0.7, tone(784.0, 0.65, 0.35, attack=0.02, partials=brass)))


def submarine():
    def call(t):
        return 466.2 + 3 * math.sin(TAU * 5 * t)
    beep = tone(call, 0.50, 0.16, attack=0.03, partials=((1, 1.0), (3, 0.04)))
    return mixed((0.0, 1.0, beep), (0.24, 0.45, beep), (0.45, 0.2, beep))


def funk():
    def slap(pitch, seconds):
        string = tone(pitch, seconds, 0.25, partials=harmonics(16, 0.8))
        wah = resonance(string, lambda t: 350 + 1500 * math.exp(-t / 0.06), 300)
        return [0.25 * x + 6 * y for x, y in zip(string, wah)]
    return mixed((0.0, 0.9, slap(110.0, 0.13)), (0.15, 1.0, slap(164.8, 0.35)))


def basso():
    return mixed((0.0, 1.0, tone(87.3, 0.70, 0.30, attack=0.015, partials=harmonics(7, 0.7))),
                 (0.0, 0.6, tone(92.5, 0.70, 0.30, attack=0.015, partials=harmonics(5, 0.9))))


def blow():
    breath = resonance(noise(0.80, 7), lambda t: 560 + 160 * t, 260)
    return shaped(breath, lambda t: math.sin(math.pi * min(1.0, t / 0.80)) ** 1.5)


def bottle():
    def glug(low, high, seconds):
        return tone(lambda t: low + (high - low) * (t / seconds) ** 2, seconds, 0.09, attack=0.006,
                    partials=((1, 1.0), (2, 0.12)))
    return mixed((0.0, 1.0, glug(250, 420, 0.20)), (0.17, 0.9, glug(290, 500, 0.20)),
                 (0.33, 0.8, glug(340, 640, 0.22)))


def frog():
    def croak(seconds, rate):
        throat = tone(165.0, seconds, 5.0, partials=harmonics(20, 0.2))
        rasp = resonance(throat, 1150, 200)
        return shaped(rasp, lambda t: (0.5 - 0.5 * math.cos(TAU * rate * t)) ** 3 * math.sin(math.pi * t / seconds))
    return mixed((0.0, 0.8, croak(0.26, 34)), (0.32, 1.0, croak(0.40, 38)))


def morse():
    """V: three dots and a dash."""
    dot = 0.055
    marks = []
    at = 0.0
    for length in (1, 1, 1, 3):
        mark = tone(750.0, length * dot, 9.0, attack=0.004)
        marks.append((at, 1.0, shaped(mark, lambda t, end=length * dot: min(1.0, (end - t) / 0.004))))
        at += (length + 1) * dot
    return mixed(*marks)


def pop():
    return tone(lambda t: 480 + 1500 * min(1.0, t / 0.045), 0.14, 0.03, attack=0.002)


def purr():
    body = tone(52.0, 0.90, 9.0, partials=harmonics(8, 0.6))
    air = resonance(noise(0.90, 3), 240, 160)
    both = [0.5 * x + 1.5 * y for x, y in zip(body, air)]
    return shaped(both, lambda t: (0.55 - 0.45 * math.cos(TAU * 22 * t)) * math.sin(math.pi * t / 0.90) ** 0.7)


def sosumi():
    return mixed((0.00, 0.8, plucked(440.0, 0.30, 11, 0.985)), (0.11, 0.8, plucked(587.3, 0.30, 12, 0.985)),
                 (0.22, 1.0, plucked(880.0, 0.55, 13, 0.993)))


def tink():
    return tone(3520.0, 0.22, 0.035, attack=0.0005, partials=((1, 1.0), (1.73, 0.7), (2.61, 0.4)))


SOUNDS = (glass, ping, hero, submarine, funk, basso, blow, bottle, frog, morse, pop, purr, sosumi, tink)


def finished(sound):
    """Centred on zero, faded at both ends, and as loud as all others."""
    middle = sum(sound) / len(sound)
    length = len(sound) / RATE
    faded = shaped([x - middle for x in sound],
                   lambda t: min(1.0, t / FADE_IN, (length - t) / FADE_OUT))
    loudest = max(abs(x) for x in faded)
    return array.array('h', (round(x / loudest * PEAK * 32_767) for x in faded))


def write(path, samples):
    if sys.byteorder == 'big':
        samples.byteswap()
    with wave.open(str(path), 'wb') as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples.tobytes())


def main():
    if len(sys.argv) != 2:
        sys.exit('usage: make_sounds.py FOLDER')
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for sound in SOUNDS:
        write(folder / f'vorlane-{sound.__name__}.wav', finished(sound()))


if __name__ == '__main__':
    main()
