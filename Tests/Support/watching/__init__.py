"""Looks at running programs from outside, and says whether they stay as they are."""
