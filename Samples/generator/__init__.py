"""Photographs of business cards of people who do not exist.

The road of one picture: `people` invents a person, `style` chooses paper and type, `layouts` prints the person on a
`page` (which notes every field it prints), `photograph` takes the picture of that page lying on a `background` under
some `light`, and `labels` writes down what was printed.
"""
