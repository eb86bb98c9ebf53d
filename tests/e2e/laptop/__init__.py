"""A laptop that exists only in processes: private buses, a battery made of files, an invisible screen.

Each module provides one part; `VirtualLaptop` assembles them.
"""
