"""Measures a reader of cards: `run` has a server read every picture, `counting` compares the answers with what is
printed, by the rule of `matching`, and `tables` says how well they agree.
"""
