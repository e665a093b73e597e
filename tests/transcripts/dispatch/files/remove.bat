@echo the program remove was run
