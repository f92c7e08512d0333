#include "pdf/object_writer.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <fmt/format.h>

namespace veldra {

namespace {

constexpr std::size_t place_size = sizeof(std::uint64_t);
/// Places are handed to their file, and taken from it, in pieces of this many.
constexpr std::size_t places_at_once = 4096;

std::string table_line(std::uint64_t place) {
    return place == 0 ? "0000000000 00000 f \n" : fmt::format("{:010} 00000 n \n", place);
}

}  // namespace

PdfObjectWriter::PdfObjectWriter(ReplacedFile& file, int shared)
    : file_(file), shared_places_(static_cast<std::size_t>(shared) + 1), last_number_(shared) {
    write("%PDF-1.6\n%\xBF\xF7\xA2\xFE\n");  // bytes above 127 mark a binary file
}

void PdfObjectWriter::write(std::string_view bytes) {
    constexpr std::uint64_t prime = 1099511628211ULL;  // FNV-1a, by words
    std::size_t at = 0;
    for (; at + place_size <= bytes.size(); at += place_size) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, place_size);
        first_hash_ = (first_hash_ ^ word) * prime;
        second_hash_ = (second_hash_ ^ (word >> 29U)) * prime + word;
    }
    for (; at < bytes.size(); ++at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        first_hash_ = (first_hash_ ^ byte) * prime;
        second_hash_ = (second_hash_ ^ byte) * prime + byte;
    }
    file_.write(bytes);
    written_ += bytes.size();
}

void PdfObjectWriter::begin_object(int number) {
    const auto index = static_cast<std::size_t>(number);
    if (index < shared_places_.size()) {
        shared_places_[index] = written_;
    } else if (number == last_number_ + 1) {
        last_number_ = number;
        waiting_places_.append(reinterpret_cast<const char*>(&written_), place_size);
        append_places();
    } else {
        throw std::logic_error("objects out of their order");
    }
    write(fmt::format("{} 0 obj\n", number));
}

void PdfObjectWriter::end_object() {
    write("\nendobj\n");
}

void PdfObjectWriter::stream_object(int number, std::string_view keys, std::string_view bytes) {
    begin_object(number);
    write(fmt::format("<< {} /Length {} >>\nstream\n", keys, bytes.size()));
    write(bytes);
    write("\nendstream");
    end_object();
}

void PdfObjectWriter::append_places() {
    if (waiting_places_.size() >= places_at_once * place_size) {
        other_places_.append(waiting_places_);
        waiting_places_.clear();
    }
}

std::string PdfObjectWriter::name_of_content() const {
    return fmt::format("{:016x}{:016x}", first_hash_, second_hash_);
}

void PdfObjectWriter::finish(std::string_view keys) {
    const std::uint64_t table = written_;
    write(fmt::format("xref\n0 {}\n0000000000 65535 f \n", last_number_ + 1));
    for (std::size_t i = 1; i < shared_places_.size(); ++i) {
        write(table_line(shared_places_[i]));
    }
    other_places_.append(waiting_places_);
    const std::size_t others = static_cast<std::size_t>(last_number_) + 1 - shared_places_.size();
    for (std::size_t done = 0; done < others; done += places_at_once) {
        const std::size_t count = std::min(places_at_once, others - done);
        const std::string places = other_places_.read(done * place_size, count * place_size);
        for (std::size_t i = 0; i < count; ++i) {
            std::uint64_t place = 0;
            std::memcpy(&place, places.data() + i * place_size, place_size);
            write(table_line(place));
        }
    }
    const std::string id = name_of_content();
    write(fmt::format("trailer << {0} /Size {1} /ID [<{2}><{2}>] >>\nstartxref\n{3}\n%%EOF\n", keys,
                      last_number_ + 1, id, table));
}

}  // namespace veldra
