#include "metadata/Streams/FileStream.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/MemoryWriter.h"
#include "metadata/Streams/StreamReader.h"
#include "metadata/Streams/StreamWriter.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

using namespace ImagingFramework;

namespace {

constexpr std::size_t Rows = 3000;
constexpr std::size_t RowBytes = 12000;

std::filesystem::path FileName() {
    return std::filesystem::temp_directory_path() / "rasterloom-bench-stream";
}

void SetBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes));
}

/// The yardstick for the rows.
void BM_CopyRows(benchmark::State& state) {
    std::vector<char> image(Rows * RowBytes, 3);
    std::vector<char> row(RowBytes);
    for (auto _ : state) {
        for (std::size_t y = 0; y < Rows; ++y) {
            std::memcpy(row.data(), image.data() + y * RowBytes, RowBytes);
            benchmark::DoNotOptimize(row.data());
        }
    }
    SetBytes(state, image.size());
}
BENCHMARK(BM_CopyRows);

void SaveRows(const std::vector<char>& row) {
    const auto stream = std::make_shared<FileStream>(FileName(), FileStreamFlags::Encoder);
    StreamWriter writer(stream);
    for (std::size_t y = 0; y < Rows; ++y) {
        writer.WriteBytes(row.data(), row.size());
    }
    writer.Flush();
    stream->SetCompleted(true);
    stream->Close();
}

void BM_SaveRows(benchmark::State& state) {
    const std::vector<char> row(RowBytes, 3);
    for (auto _ : state) {
        SaveRows(row);
    }
    SetBytes(state, Rows * RowBytes);
    std::filesystem::remove(FileName());
}
BENCHMARK(BM_SaveRows);

/// The yardstick for saving: the same calls without the library.
void BM_SaveRowsPlain(benchmark::State& state) {
    const std::vector<char> row(RowBytes, 3);
    const std::string name = FileName().string();
    for (auto _ : state) {
        std::FILE* const file = std::fopen((name + ".new").c_str(), "wb");
        std::setvbuf(file, nullptr, _IONBF, 0);
        for (std::size_t y = 0; y < Rows; ++y) {
            std::fwrite(row.data(), row.size(), 1, file);
        }
        std::fclose(file);
        std::filesystem::rename(name + ".new", name);
    }
    SetBytes(state, Rows * RowBytes);
    std::filesystem::remove(name);
}
BENCHMARK(BM_SaveRowsPlain);

/// From the last row up, as files of bottom-up images are read.
void BM_LoadRowsBackwards(benchmark::State& state) {
    std::vector<char> row(RowBytes);
    SaveRows(row);
    for (auto _ : state) {
        StreamReader reader(std::make_shared<FileStream>(FileName(), FileStreamFlags::Decoder));
        for (std::size_t y = Rows; y-- != 0;) {
            reader.Seek(static_cast<std::int64_t>(y * RowBytes));
            reader.ReadBytes(row.size(), row.data(), row.size());
        }
    }
    SetBytes(state, Rows * RowBytes);
    std::filesystem::remove(FileName());
}
BENCHMARK(BM_LoadRowsBackwards);

void BM_ReadPackedPixels(benchmark::State& state) {
    const std::vector<char> block(1 << 16, 0x5A);
    const auto bits = static_cast<std::uint64_t>(state.range(0));
    for (auto _ : state) {
        MemoryReader reader(block.data(), block.size());
        for (std::size_t i = 0; i < block.size() * 8 / bits; ++i) {
            std::uint8_t pixel = 0;
            reader.ReadBits(bits, &pixel, 1, false);
            benchmark::DoNotOptimize(pixel);
        }
    }
    SetBytes(state, block.size());
}
BENCHMARK(BM_ReadPackedPixels)->Arg(1)->Arg(4)->Arg(8);

void BM_WritePackedPixels(benchmark::State& state) {
    std::vector<char> block(1 << 16);
    const auto bits = static_cast<std::uint64_t>(state.range(0));
    const std::uint8_t pixel = 0x5A;
    for (auto _ : state) {
        MemoryWriter writer(block.data(), block.size());
        for (std::size_t i = 0; i < block.size() * 8 / bits; ++i) {
            writer.WriteBits(&pixel, bits, 8 - bits);
        }
        benchmark::DoNotOptimize(block.data());
    }
    SetBytes(state, block.size());
}
BENCHMARK(BM_WritePackedPixels)->Arg(1)->Arg(4)->Arg(8);

} // namespace

BENCHMARK_MAIN();
