@echo the program res was run
