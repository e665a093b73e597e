@echo the program show was run
