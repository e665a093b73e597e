@echo the program create was run
