! tests/frame/fortran_lines.f90 - a host program's own lines around messages of the library
module fortran_lines
    use iso_c_binding, only: c_int
    implicit none

    interface
        subroutine complain(k) bind(c)
            import c_int
            integer(c_int), value :: k
        end subroutine
        integer(c_int) function complaint(k) bind(c)
            import c_int
            integer(c_int), value :: k
        end function
    end interface
contains
    subroutine print_lines(count) bind(c)
        integer(c_int), value :: count
        integer :: k
        do k = 1, count
            print '(a, i0)', 'line ', k
            call complain(k)
        end do
    end subroutine

    ! Messages from inside of statements: of unit 6, of a character variable, of another unit, with and without format.
    subroutine print_within_statements() bind(c)
        character(20) :: text
        integer :: whole
        print '(a)', 'first'
        write (text, '(i0)') complaint(1)
        print '(a)', 'second'
        open (77, status='scratch', form='unformatted')
        write (77) complaint(2)
        close (77)
        print '(a, i0)', 'third ', complaint(3)
        whole = complaint(4)
        print '(a)', 'last'
    end subroutine

    subroutine write_file(unit, close_it) bind(c)
        integer(c_int), value :: unit, close_it
        write (unit, '(a)') 'of the program'
        if (close_it /= 0) close (unit)
    end subroutine
end module
