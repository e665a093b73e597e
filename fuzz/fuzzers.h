#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvendo {

// What is done with any bytes, a fuzzer for each thing that is read. It ends the program when what
// must hold does not (Demand). All of them are one program: TARVENDO_FUZZER names the one that it
// is to be, as its source is named, "claim" for claim_fuzz.cpp.

void FuzzBatchFile(const std::uint8_t* data, std::size_t size);
void FuzzClaim(const std::uint8_t* data, std::size_t size);
void FuzzCommandLine(const std::uint8_t* data, std::size_t size);
void FuzzDebugFile(const std::uint8_t* data, std::size_t size);
void FuzzEmergency(const std::uint8_t* data, std::size_t size);
void FuzzEnginesJson(const std::uint8_t* data, std::size_t size);
void FuzzHelpFile(const std::uint8_t* data, std::size_t size);
void FuzzLog(const std::uint8_t* data, std::size_t size);
void FuzzOpenings(const std::uint8_t* data, std::size_t size);
void FuzzPgn(const std::uint8_t* data, std::size_t size);
void FuzzPgnJournal(const std::uint8_t* data, std::size_t size);
void FuzzPlayerFile(const std::uint8_t* data, std::size_t size);
void FuzzStartUp(const std::uint8_t* data, std::size_t size);
void FuzzTableOptions(const std::uint8_t* data, std::size_t size);
void FuzzTourneyFile(const std::uint8_t* data, std::size_t size);
void FuzzWinboardIni(const std::uint8_t* data, std::size_t size);

}  // namespace tarvendo
