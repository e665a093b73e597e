@echo the program rem was run
