"""Usage: python3 -m laptop.screenshots PROGRAM FOLDER"""
import os
import sys

from .scenes import SCENES
from .session import Session


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    program, folder = sys.argv[1:]
    for scene in SCENES:
        path = os.path.join(folder, scene.name + '.png')
        with Session(program, scene) as session:
            scene.play(session)
            session.photograph(path)
        print(path)
    return 0


sys.exit(main())
