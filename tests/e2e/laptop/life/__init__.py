"""Simulated use of a laptop, minute by minute: the events, the expected reminders and samples, and the costs."""
