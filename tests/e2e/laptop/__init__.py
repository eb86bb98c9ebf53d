"""A laptop that exists only in processes: private buses, a battery made of files, a screen nobody sees.

Each module holds one piece of it. `VirtualLaptop` puts the pieces together.
"""
