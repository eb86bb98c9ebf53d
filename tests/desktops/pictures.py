"""Takes the pictures in docs/. Usage: pictures.py FOLDER [NAME]..."""
import os
import sys

from scenes import SCENES
from stage import Stage

PROGRAM = '/usr/bin/vorlane'
LOGS = '/tmp/picture-logs'


def main(folder, *names):
    os.makedirs(folder, exist_ok=True)
    for scene in SCENES:
        if names and scene.name not in names:
            continue
        path = os.path.join(folder, scene.name + '.png')
        with Stage(scene, PROGRAM, LOGS) as stage:
            scene.play(stage)
            stage.photograph(path)
        print(path, flush=True)


main(*sys.argv[1:])
