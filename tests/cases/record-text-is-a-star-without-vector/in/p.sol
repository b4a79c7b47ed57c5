foo
