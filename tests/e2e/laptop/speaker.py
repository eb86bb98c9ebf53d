"""A sound server whose output is recorded and recognised."""
import array
import cmath
import functools
import math
import os
import pathlib
import wave

from .waiting import wait_until

RATE = 44_100
BLOCK = RATE // 50
PAUSE = RATE // 2  # half a second in samples: the pauses within our sounds are shorter
AUDIBLE = 300  # amplitude, of at most 32767
LIKE = 0.9  # likeness at which a sound counts as recognised
SIZE = 16_384  # samples in a spectrum


class Speaker:
    def __init__(self, machine, sounds):
        self._machine, self._sounds = machine, pathlib.Path(sounds)
        self._heard_until = 0
        self._recorder = None
        self.address = None  # the value for PULSE_SERVER

    def start(self):
        socket = self._machine.folder('run', 'sound')
        script = self._machine.write(
            f'load-module module-native-protocol-unix auth-anonymous=1 socket={socket}\n'
            f'load-module module-null-sink sink_name=speaker rate={RATE}\n', 'config', 'sound.pa')
        server = self._machine.start('pulseaudio', [
            '/usr/bin/pulseaudio', '-n', '-F', script, '--daemonize=no', '--use-pid-file=no',
            '--exit-idle-time=-1'])
        wait_until(lambda: os.path.exists(socket) or not server.running, 'the sound server', look_every=0.02)
        self.address = self._machine.environment['PULSE_SERVER'] = f'unix:{socket}'
        self._recorder = self._machine.start('parec', [
            '/usr/bin/parec', '-d', 'speaker.monitor', '--raw', '--format=s16le', f'--rate={RATE}',
            '--channels=1', '--latency-msec=20'])
        wait_until(lambda: self._samples(), 'the recording to begin', look_every=0.02)
        return self

    def wait_for_sound(self):
        """The name of the next sound, once it has ended."""
        wait_until(lambda: self._next() is not None, 'a sound', look_every=0.1)
        start, sound = self._next()
        self._heard_until = start + len(sound) + BLOCK
        heard = spectrum(sound)
        alike = {path.stem.removeprefix('vorlane-'): likeness(heard, spectrum_of_file(path))
                 for path in self._sounds.glob('*.wav')}
        best = max(alike, key=alike.get)
        assert alike[best] > LIKE, f'no sound of ours: {len(sound)} samples at {start}, {alike}'
        return best

    def _samples(self):
        data = pathlib.Path(self._recorder.output_path).read_bytes()
        return array.array('h', data[:len(data) // 2 * 2])

    def _next(self):
        """The start and the samples of the next sound; None until it has ended."""
        samples = self._samples()
        loud = [at for at in range(self._heard_until, len(samples), BLOCK)
                if max(map(abs, samples[at:at + BLOCK])) > AUDIBLE]
        if not loud:
            return None
        end = next((one for one, other in zip(loud, loud[1:]) if other - one > PAUSE), loud[-1]) + BLOCK
        if len(samples) - end < PAUSE:
            return None
        return loud[0], samples[loud[0]:end]


@functools.cache
def spectrum_of_file(path):
    with wave.open(str(path)) as file:
        return spectrum(array.array('h', file.readframes(file.getnframes())))


def likeness(one, other):
    """The similarity of two spectra, at most 1. Tolerates gaps in a recording."""
    return sum(x * y for x, y in zip(one, other))


def spectrum(samples):
    """The power in each third of an octave from 50 Hz, as a vector of length 1."""
    halved = [(a + b) / 2 for a, b in zip(samples[::2], samples[1::2])][:SIZE]
    lines = transform(halved + [0.0] * (SIZE - len(halved)))
    power = [0.0] * 24
    for i in range(1, SIZE // 2):
        band = math.floor(3 * math.log2(i * RATE / 2 / SIZE / 50))
        if 0 <= band < len(power):
            power[band] += abs(lines[i]) ** 2
    whole = sum(power)
    return [(one / whole) ** 0.5 for one in power]


def transform(values):
    """Fast Fourier transform; the length must be a power of two."""
    if len(values) == 1:
        return values
    even, odd = transform(values[::2]), transform(values[1::2])
    turned = [cmath.exp(-2j * cmath.pi * i / len(values)) * x for i, x in enumerate(odd)]
    return [a + b for a, b in zip(even, turned)] + [a - b for a, b in zip(even, turned)]
